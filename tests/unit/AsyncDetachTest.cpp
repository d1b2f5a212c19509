#include "async/Detach.h"

#include "async/Clock.h"
#include "async/Gate.h"
#include "support/EventLoop.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tarnwik::async {

namespace {

Task<> failAfter(std::shared_ptr<Gate> gate)
{
    co_await gate->wait();
    throw std::runtime_error("failed later");
}

Task<> failAtOnce()
{
    throw std::runtime_error("failed at once");
    co_return;
}

Task<> succeed(std::shared_ptr<bool> hasRun)
{
    co_await yield();
    *hasRun = true;
}

class DetachTest : public testing::Test
{
protected:
    std::function<void(std::exception_ptr)> recorder()
    {
        return [this](std::exception_ptr failure) {
            try {
                std::rethrow_exception(failure);
            } catch (const std::exception &error) {
                m_failures.emplace_back(error.what());
            }
        };
    }

    std::vector<std::string> m_failures;
};

TEST_F(DetachTest, lettingATaskGoLetsItEnd)
{
    const auto hasRun = std::make_shared<bool>(false);
    detach(succeed(hasRun), recorder());
    EXPECT_TRUE(test::spinUntil([&] { return *hasRun; }));
    test::settleEvents();
    EXPECT_TRUE(m_failures.empty());
}

TEST_F(DetachTest, reportsAFailure)
{
    const auto gate = std::make_shared<Gate>();
    detach(failAfter(gate), recorder());
    gate->open();
    ASSERT_TRUE(test::spinUntil([&] { return !m_failures.empty(); }));
    EXPECT_EQ(m_failures, std::vector<std::string>{"failed later"});
}

TEST_F(DetachTest, reportsAFailureThatCameAtOnceFromTheEventLoopToo)
{
    detach(failAtOnce(), recorder());
    EXPECT_TRUE(m_failures.empty());
    ASSERT_TRUE(test::spinUntil([&] { return !m_failures.empty(); }));
    EXPECT_EQ(m_failures, std::vector<std::string>{"failed at once"});
}

TEST_F(DetachTest, isSilentAboutACancellation)
{
    std::stop_source source;
    detach(yield(source.get_token()), recorder());
    source.request_stop();
    test::settleEvents();
    EXPECT_TRUE(m_failures.empty());
}

TEST(DetachDeathTest, aFailureThatNobodyTakesEndsTheProgram)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(
        {
            detach(failAtOnce());
            test::settleEvents();
        },
        "");
}

} // namespace

} // namespace tarnwik::async
