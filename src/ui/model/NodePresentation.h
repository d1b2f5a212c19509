#pragma once

#include "api/NodeModels.h"

#include <QObject>
#include <QString>

namespace tarnwik {

/// The selected exit node as the screens and menus show it. A value.
class NodePresentation
{
    Q_GADGET
    Q_PROPERTY(QString runtimeLine MEMBER m_runtimeLine CONSTANT)
    Q_PROPERTY(QString caption MEMBER m_caption CONSTANT)

public:
    NodePresentation() = default;
    explicit NodePresentation(const ExitNode &node);

    const QString &caption() const { return m_caption; }

    bool operator==(const NodePresentation &) const = default;

private:
    QString m_runtimeLine;
    QString m_caption;
};

} // namespace tarnwik
