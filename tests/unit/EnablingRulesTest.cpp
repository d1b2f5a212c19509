#include "ui/model/EnablingRules.h"

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

constexpr auto canConnect = VPNActionState::CanConnect;
constexpr auto canDisconnect = VPNActionState::CanDisconnect;
constexpr auto inTransition = VPNActionState::InTransition;

/// A state of the models, and what the user is offered in it.
struct Rule
{
    bool isSignedIn;
    bool isLoading;
    bool hasSelectedNode;
    VPNActionState actionState;
    bool vpnCommand;
    bool vpnControl;
    bool sessionCommands;
};

constexpr bool yes = true;
constexpr bool no = false;

// Every state that there is.
constexpr Rule rules[] = {
    // signed in, loading, node, state | menu's VPN command, screen's VPN control, Refresh and Sign Out
    {no, no, no, canConnect, no, no, no},        {no, no, yes, canConnect, no, yes, no},
    {no, yes, no, canConnect, no, no, no},       {no, yes, yes, canConnect, no, no, no},
    {yes, no, no, canConnect, no, no, yes},      {yes, no, yes, canConnect, yes, yes, yes},
    {yes, yes, no, canConnect, no, no, no},      {yes, yes, yes, canConnect, no, no, no},

    {no, no, no, canDisconnect, yes, yes, no},   {no, no, yes, canDisconnect, yes, yes, no},
    {no, yes, no, canDisconnect, no, no, no},    {no, yes, yes, canDisconnect, no, no, no},
    {yes, no, no, canDisconnect, yes, yes, yes}, {yes, no, yes, canDisconnect, yes, yes, yes},
    {yes, yes, no, canDisconnect, no, no, no},   {yes, yes, yes, canDisconnect, no, no, no},

    {no, no, no, inTransition, no, no, no},      {no, no, yes, inTransition, no, no, no},
    {no, yes, no, inTransition, no, no, no},     {no, yes, yes, inTransition, no, no, no},
    {yes, no, no, inTransition, no, no, yes},    {yes, no, yes, inTransition, no, no, yes},
    {yes, yes, no, inTransition, no, no, no},    {yes, yes, yes, inTransition, no, no, no},
};

class EnablingRules : public testing::TestWithParam<Rule>
{
protected:
    static ModelState state()
    {
        return {.isSignedIn = GetParam().isSignedIn,
                .isLoading = GetParam().isLoading,
                .hasSelectedNode = GetParam().hasSelectedNode,
                .actionState = GetParam().actionState};
    }
};

TEST_P(EnablingRules, sayWhetherTheMenusOfferConnectOrDisconnect)
{
    EXPECT_EQ(enabling::isVPNCommandEnabled(state()), GetParam().vpnCommand);
}

TEST_P(EnablingRules, sayWhetherTheConnectScreenOffersIt)
{
    EXPECT_EQ(enabling::isVPNControlEnabled(state()), GetParam().vpnControl);
}

TEST_P(EnablingRules, sayWhetherTheMenusOfferRefreshAndSignOut)
{
    EXPECT_EQ(enabling::isSessionCommandEnabled(state()), GetParam().sessionCommands);
}

std::string name(const testing::TestParamInfo<Rule> &info)
{
    const Rule &rule = info.param;
    std::string name = rule.isSignedIn ? "SignedIn" : "SignedOut";
    name += rule.isLoading ? "Loading" : "Idle";
    name += rule.hasSelectedNode ? "WithNode" : "WithoutNode";
    switch (rule.actionState) {
    case canConnect:
        return name + "CanConnect";
    case canDisconnect:
        return name + "CanDisconnect";
    case inTransition:
        return name + "InTransition";
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, EnablingRules, testing::ValuesIn(rules), name);

} // namespace
} // namespace tarnwik::test
