#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tarnwik {

/// The families that text is set in: Inter and Inter Display where they are installed, else the desktop's own font.
class SystemFonts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString textFamily READ textFamily CONSTANT)
    Q_PROPERTY(QString titleFamily READ titleFamily CONSTANT)

public:
    static QString textFamily();
    static QString titleFamily();

    /// The first of \a families that is installed, or the desktop's own font.
    static QString firstInstalled(const QStringList &families);
};

} // namespace tarnwik
