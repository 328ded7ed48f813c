#include "comm/ReplyPolling.h"
#include "support/TestCase.h"

#include <QElapsedTimer>
#include <QTest>

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
    QCOMPARE(ReplyPolling::firstReply([&] {
                 ++attempts;
                 return &reply;
             }),
             &reply);
    QCOMPARE(attempts, 1);
}

void tst_ReplyPolling::sleepsBetweenTheAttempts()
{
    int reply = 0;
    int attempts = 0;
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(
        ReplyPolling::firstReply([&]() -> int * { return ++attempts == 4 ? &reply : nullptr; }),
        &reply);
    QCOMPARE(attempts, 4);
    QVERIFY(timer.elapsed() >= 30);
}

void tst_ReplyPolling::givesUpAfter51Attempts()
{
    int attempts = 0;
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(ReplyPolling::firstReply([&]() -> int * {
                 ++attempts;
                 return nullptr;
             }),
             nullptr);
    QCOMPARE(attempts, 51);
    // A sleep also stands behind the last attempt.
    QVERIFY(timer.elapsed() >= 510);
}

QTEST_GUILESS_MAIN(tst_ReplyPolling)
#include "tst_ReplyPolling.moc"
