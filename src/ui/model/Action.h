#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace tarnwik {

/// Something that the user can have done, by a button or by an item of a menu: one description for all of them. Lives
/// on the main thread.
class Action : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString symbol READ symbol NOTIFY changed)
    Q_PROPERTY(QString shortcut READ shortcut NOTIFY changed)
    Q_PROPERTY(bool isEnabled READ isEnabled NOTIFY changed)

public:
    /// How an action looks in a menu.
    struct Look
    {
        QString title;
        /// By its SF Symbols name; empty for none.
        QString symbol;
        /// In portable notation, where "Ctrl" is the Command key of a Mac; empty for none.
        QString shortcut;
        bool isEnabled = true;

        bool operator==(const Look &) const = default;
    };

    /// \a perform is what trigger() does.
    Action(Look look, std::function<void()> perform);

    QString title() const { return m_look.title; }
    QString symbol() const { return m_look.symbol; }
    QString shortcut() const { return m_look.shortcut; }

    /// Whether menus offer it.
    bool isEnabled() const { return m_look.isEnabled; }
    void setEnabled(bool isEnabled);

    /// Does it, and returns at once: what takes time runs to its end whatever becomes of the screen. Nothing happens
    /// while the action is not enabled.
    Q_INVOKABLE virtual void trigger();

Q_SIGNALS:
    /// Any of the properties has another value, and all have theirs.
    void changed();

protected:
    void setLook(const Look &look);
    void perform() const { m_perform(); }

private:
    Look m_look;
    std::function<void()> m_perform;
};

} // namespace tarnwik
