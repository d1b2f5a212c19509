#include "platform/linux/NetworkManagerTurns.h"

#include "support/EventLoop.h"

#include "async/Gate.h"

#include <gtest/gtest.h>

#include <QList>

namespace tarnwik {

namespace {

Task<> operation(NetworkManagerTurns &turns, async::Gate &gate, QList<int> &steps, int number)
{
    co_await turns.next();
    const NetworkManagerTurns::Turn turn(turns);
    steps.append(number);
    co_await gate.wait();
    steps.append(-number);
}

TEST(NetworkManagerTurns, operationsRunOneAfterTheOtherInOrder)
{
    NetworkManagerTurns turns;
    QList<int> steps;
    async::Gate first;
    async::Gate second;
    async::Gate third;
    test::Running<> one(operation(turns, first, steps, 1));
    test::Running<> two(operation(turns, second, steps, 2));
    test::Running<> three(operation(turns, third, steps, 3));
    third.open();
    second.open();
    test::settleEvents();
    EXPECT_EQ(steps, QList<int>({1}));

    first.open();
    three.result();
    EXPECT_EQ(steps, QList<int>({1, -1, 2, -2, 3, -3}));
}

TEST(NetworkManagerTurns, aFailureGivesTheTurnOn)
{
    NetworkManagerTurns turns;
    const auto failing = [](NetworkManagerTurns &all) -> Task<> {
        co_await all.next();
        const NetworkManagerTurns::Turn turn(all);
        throw std::runtime_error("failed");
    };
    EXPECT_THROW(test::run(failing(turns)), std::runtime_error);
    QList<int> steps;
    async::Gate gate;
    gate.open();
    test::run(operation(turns, gate, steps, 1));
    EXPECT_EQ(steps, QList<int>({1, -1}));
}

} // namespace

} // namespace tarnwik
