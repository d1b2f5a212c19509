#include "async/Child.h"

#include "async/Clock.h"
#include "async/Gate.h"
#include "support/EventLoop.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace tarnwik::async {

namespace {

struct Failure : std::runtime_error
{
    Failure()
        : std::runtime_error("failure")
    {
    }
};

/// A child's work, which the test lets end as it likes.
Task<std::string> work(std::shared_ptr<Gate> gate, std::shared_ptr<bool> isToFail, std::stop_token token)
{
    co_await gate->wait(token);
    if (*isToFail)
        throw Failure();
    co_return "done";
}

class ChildTest : public testing::Test
{
protected:
    std::unique_ptr<Child<std::string>> makeChild()
    {
        return std::make_unique<Child<std::string>>(m_parent.get_token(), [this](std::stop_token token) {
            m_token = token;
            return work(m_gate, m_isToFail, token);
        });
    }

    std::shared_ptr<Gate> m_gate = std::make_shared<Gate>();
    std::shared_ptr<bool> m_isToFail = std::make_shared<bool>(false);
    std::stop_source m_parent;
    std::stop_token m_token;
};

TEST_F(ChildTest, runsBesideItsParentAndGivesItsValue)
{
    const auto child = makeChild();
    test::Running<std::string> parent(child->result());
    test::settleEvents();
    EXPECT_FALSE(parent.hasEnded());
    m_gate->open();
    EXPECT_EQ(parent.result(), "done");
}

TEST_F(ChildTest, givesTheValueOfATaskThatHasEndedAlready)
{
    const auto child = makeChild();
    m_gate->open();
    test::settleEvents();
    EXPECT_EQ(test::run(child->result()), "done");
}

TEST_F(ChildTest, throwsWhatTheTaskThrew)
{
    *m_isToFail = true;
    const auto child = makeChild();
    m_gate->open();
    EXPECT_THROW(test::run(child->result()), Failure);
}

TEST_F(ChildTest, settlingDropsAFailure)
{
    *m_isToFail = true;
    const auto child = makeChild();
    m_gate->open();
    EXPECT_NO_THROW(test::run(child->settle()));
}

TEST_F(ChildTest, settlingWaitsForTheEnd)
{
    const auto child = makeChild();
    test::Running<> parent(child->settle());
    test::settleEvents();
    EXPECT_FALSE(parent.hasEnded());
    m_gate->open();
    EXPECT_NO_THROW(parent.result());
}

TEST_F(ChildTest, stoppingItLeavesItsParentAlone)
{
    const auto child = makeChild();
    child->stop();
    EXPECT_FALSE(m_parent.stop_requested());
    EXPECT_THROW(test::run(child->result()), Cancelled);
}

TEST_F(ChildTest, stoppingTheParentStopsIt)
{
    const auto child = makeChild();
    m_parent.request_stop();
    EXPECT_TRUE(m_token.stop_requested());
    EXPECT_THROW(test::run(child->result()), Cancelled);
}

TEST_F(ChildTest, ofAStoppedParentIsStoppedFromTheStart)
{
    m_parent.request_stop();
    const auto child = makeChild();
    EXPECT_TRUE(m_token.stop_requested());
    EXPECT_NO_THROW(test::run(child->settle()));
}

TEST_F(ChildTest, stoppingOneLeavesTheOthersAlone)
{
    const auto first = makeChild();
    const auto secondGate = std::make_shared<Gate>();
    Child<std::string> second(m_parent.get_token(), [&](std::stop_token token) {
        return work(secondGate, std::make_shared<bool>(false), token);
    });
    first->stop();
    EXPECT_NO_THROW(test::run(first->settle()));
    secondGate->open();
    EXPECT_EQ(test::run(second.result()), "done");
}

TEST_F(ChildTest, stoppingTheParentAfterItsEndChangesNothing)
{
    {
        const auto child = makeChild();
        m_gate->open();
        EXPECT_EQ(test::run(child->result()), "done");
    }
    m_parent.request_stop();
    EXPECT_FALSE(m_token.stop_requested());
}

} // namespace

} // namespace tarnwik::async
