#pragma once

#include "api/NodeModels.h"
#include "ui/model/RecordListModel.h"

namespace tarnwik {

/// The account's devices for the list of them.
class DeviceListModel final : public RecordListModel<CustomerDevice>
{
    Q_OBJECT

public:
    enum Role {
        NameRole = Qt::UserRole,
        /// "platform · 2 profiles".
        DetailRole,
        IsEnabledRole,
    };

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

protected:
    bool looksLike(const CustomerDevice &left, const CustomerDevice &right) const override;
};

} // namespace tarnwik
