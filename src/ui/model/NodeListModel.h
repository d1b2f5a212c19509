#pragma once

#include "api/NodeModels.h"
#include "ui/model/RecordListModel.h"

namespace tarnwik {

/// The exit nodes for lists and pickers. Texts are made when a row is looked at: ten thousand nodes cost no more than
/// those on the screen.
class NodeListModel final : public RecordListModel<ExitNode>
{
    Q_OBJECT

public:
    enum Role {
        NameRole = Qt::UserRole,
        /// "provider · region · endpoint".
        DetailRole,
        StatusTextRole,
        IsOnlineRole,
        /// "Region · name".
        CaptionRole,
    };

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

protected:
    bool looksLike(const ExitNode &left, const ExitNode &right) const override;
};

} // namespace tarnwik
