#include "ui/model/NodeListModel.h"

#include "ui/model/Presentation.h"

namespace tarnwik {

QVariant NodeListModel::data(const QModelIndex &index, int role) const
{
    if (!hasRow(index))
        return {};
    const ExitNode &node = records()[index.row()];
    switch (role) {
    case NameRole:
        return node.name;
    case DetailRole:
        return presentation::nodeDetail(node);
    case StatusTextRole:
        return presentation::nodeStatusText(node);
    case IsOnlineRole:
        return presentation::isOnline(node);
    case CaptionRole:
        return presentation::nodeCaption(node);
    default:
        return {};
    }
}

QHash<int, QByteArray> NodeListModel::roleNames() const
{
    return {{NameRole, "name"},
            {DetailRole, "detail"},
            {StatusTextRole, "statusText"},
            {IsOnlineRole, "isOnline"},
            {CaptionRole, "caption"}};
}

bool NodeListModel::looksLike(const ExitNode &left, const ExitNode &right) const
{
    return left.name == right.name && left.provider == right.provider && left.region == right.region
        && left.endpoint == right.endpoint && left.status == right.status;
}

} // namespace tarnwik
