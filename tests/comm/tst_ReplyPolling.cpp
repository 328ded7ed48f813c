#include "comm/ReplyPolling.h"
#include "comm/SleepCounter.h"
#include "support/TestCase.h"

#include <QTest>

/// How often a reply is looked for, and what lies between two looks.
class tst_ReplyPolling : public TestCase
{
    Q_OBJECT

private slots:
    void endsWithoutASleepOnceThereIsAReply();
    void sleepsBetweenTheAttempts();
    void givesUpAfter51Attempts();
};

void tst_ReplyPolling::endsWithoutASleepOnceThereIsAReply()
{
    int reply = 0;
    int attempts = 0;
    const SleepCounter counter;
    QCOMPARE(ReplyPolling::firstReply([&] {
                 ++attempts;
                 return &reply;
             }),
             &reply);
    QCOMPARE(attempts, 1);
    QVERIFY(counter.hasSeenPauses(0));
}

void tst_ReplyPolling::sleepsBetweenTheAttempts()
{
    int reply = 0;
    int attempts = 0;
    const SleepCounter counter;
    QCOMPARE(
        ReplyPolling::firstReply([&]() -> int * { return ++attempts == 4 ? &reply : nullptr; }),
        &reply);
    QCOMPARE(attempts, 4);
    QVERIFY(counter.hasSeenPauses(3));
}

void tst_ReplyPolling::givesUpAfter51Attempts()
{
    int attempts = 0;
    const SleepCounter counter;
    QCOMPARE(ReplyPolling::firstReply([&]() -> int * {
                 ++attempts;
                 return nullptr;
             }),
             nullptr);
    QCOMPARE(attempts, 51);
    // A sleep also stands behind the last attempt.
    QVERIFY(counter.hasSeenPauses(51));
}

QTEST_GUILESS_MAIN(tst_ReplyPolling)
#include "tst_ReplyPolling.moc"
