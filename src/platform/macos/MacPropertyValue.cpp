#include "platform/macos/MacPropertyValue.h"

#include <QString>

namespace tarnwik {

namespace {

/// Makes the variant that stands for each kind of value.
struct VariantMaker
{
    QVariant operator()(std::monostate) const { return {}; }
    QVariant operator()(const std::string &text) const { return QString::fromStdString(text); }
    QVariant operator()(bool flag) const { return flag; }
    QVariant operator()(std::int64_t number) const { return QVariant::fromValue<qlonglong>(number); }
    QVariant operator()(double number) const { return number; }
};

} // namespace

QVariant variantFromPropertyValue(const mac::PropertyValue &value)
{
    return std::visit(VariantMaker(), value);
}

mac::PropertyValue propertyValueFromVariant(const QVariant &variant)
{
    switch (variant.metaType().id()) {
    case QMetaType::QString:
        return variant.toString().toStdString();
    case QMetaType::Bool:
        return variant.toBool();
    case QMetaType::Int:
    case QMetaType::LongLong:
        return std::int64_t(variant.toLongLong());
    case QMetaType::Double:
        return variant.toDouble();
    default:
        return {};
    }
}

} // namespace tarnwik
