#include "ui/controls/ControlsWindow.h"

#include <QAccessible>
#include <QQuickItem>

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

struct Case
{
    const char *qml;
    QAccessible::Role role;
    const char *name;
};

void PrintTo(const Case &tested, std::ostream *stream)
{
    *stream << tested.qml;
}

class PressableControl : public testing::TestWithParam<Case>
{
};

class ReadOutControl : public testing::TestWithParam<Case>
{
};

QAccessibleInterface *interfaceOf(QQuickItem *item)
{
    auto *interface = QAccessible::queryAccessibleInterface(item);
    EXPECT_TRUE(interface);
    return interface;
}

QByteArray named(const char *qml)
{
    return QByteArray("property int presses: 0\n") + QByteArray(qml).replace("{", "{ objectName: \"tested\"; ");
}

const Case pressable[] = {
    {"Button { text: \"Restore\"; onClicked: presses += 1 }", QAccessible::Button, "Restore"},
    {"ProminentButton { text: \"Connect\"; onClicked: presses += 1 }", QAccessible::Button, "Connect"},
    {"ToolButton { symbol: \"power\"; Accessible.name: \"Menu\"; onClicked: presses += 1 }", QAccessible::Button,
     "Menu"},
    {"LinkButton { text: \"Email support\"; onClicked: presses += 1 }", QAccessible::Link, "Email support"},
    {"SidebarRow { text: \"Account\"; symbol: \"gearshape\"; onClicked: presses += 1 }", QAccessible::ListItem,
     "Account"},
    {"Picker { model: [\"a\"]; Accessible.name: \"Exit node\"; popup.onAboutToShow: presses += 1 }",
     QAccessible::ComboBox, "Exit node"},
};

const Case readOut[] = {
    {"Label { text: \"Connected\" }", QAccessible::StaticText, "Connected"},
    {"ElidedLabel { text: \"A long name\"; width: 20 }", QAccessible::StaticText, "A long name"},
    {"SectionHeading { text: \"Nodes\" }", QAccessible::Heading, "Nodes"},
    {"TextField { placeholderText: \"Email\" }", QAccessible::EditableText, "Email"},
    {"PasswordField { placeholderText: \"Password\"; text: \"secret\" }", QAccessible::EditableText, "Password"},
    {"ErrorText { text: \"Bad.\" }", QAccessible::AlertMessage, "Bad."},
    {"Spinner {}", QAccessible::Indicator, "In progress"},
};

} // namespace

TEST_P(PressableControl, isPressedThroughItsAccessibleInterface)
{
    ControlsWindow window(named(GetParam().qml));
    auto *interface = interfaceOf(window.item(QStringLiteral("tested")));
    EXPECT_EQ(interface->role(), GetParam().role);
    EXPECT_EQ(interface->text(QAccessible::Name), QString::fromUtf8(GetParam().name));
    EXPECT_TRUE(interface->state().focusable);

    ASSERT_TRUE(interface->actionInterface());
    EXPECT_TRUE(interface->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()));
    interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(window.view().rootObject()->property("presses").toInt(), 1);
}

TEST_P(PressableControl, isNotPressedThroughItsAccessibleInterfaceWhileDisabled)
{
    ControlsWindow window(named(GetParam().qml));
    auto *item = window.item(QStringLiteral("tested"));
    item->setEnabled(false);
    EXPECT_TRUE(interfaceOf(item)->state().disabled);
    interfaceOf(item)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(window.view().rootObject()->property("presses").toInt(), 0);
}

TEST_P(ReadOutControl, hasARoleAndAName)
{
    ControlsWindow window(named(GetParam().qml));
    auto *interface = interfaceOf(window.item(QStringLiteral("tested")));
    EXPECT_EQ(interface->role(), GetParam().role);
    EXPECT_EQ(interface->text(QAccessible::Name), QString::fromUtf8(GetParam().name));
}

TEST(PasswordField, isAPasswordToAssistiveTechnologiesWhoseTextTheyNeverGet)
{
    ControlsWindow window(named("PasswordField { placeholderText: \"Password\"; text: \"secret\" }"));
    auto *interface = interfaceOf(window.item(QStringLiteral("tested")));
    EXPECT_TRUE(interface->state().passwordEdit);
    EXPECT_EQ(interface->textInterface(), nullptr);
    for (const auto kind : {QAccessible::Name, QAccessible::Description, QAccessible::Value, QAccessible::Help})
        EXPECT_FALSE(interface->text(kind).contains(QStringLiteral("secret")));
}

INSTANTIATE_TEST_SUITE_P(Controls, PressableControl, testing::ValuesIn(pressable));
INSTANTIATE_TEST_SUITE_P(Controls, ReadOutControl, testing::ValuesIn(readOut));

} // namespace tarnwik::test
