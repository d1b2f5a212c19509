#include "ui/model/DeviceListModel.h"

#include "ui/model/Presentation.h"

namespace tarnwik {

QVariant DeviceListModel::data(const QModelIndex &index, int role) const
{
    if (!hasRow(index))
        return {};
    const CustomerDevice &device = records()[index.row()];
    switch (role) {
    case NameRole:
        return device.name;
    case DetailRole:
        return presentation::deviceDetail(device);
    case IsEnabledRole:
        return device.enabled;
    default:
        return {};
    }
}

QHash<int, QByteArray> DeviceListModel::roleNames() const
{
    return {{NameRole, "name"}, {DetailRole, "detail"}, {IsEnabledRole, "isEnabled"}};
}

bool DeviceListModel::looksLike(const CustomerDevice &left, const CustomerDevice &right) const
{
    return left.name == right.name && left.platform == right.platform && left.enabled == right.enabled
        && left.profiles.size() == right.profiles.size();
}

} // namespace tarnwik
