#include "serial/ModemLineWatch.h"
#include "support/TestCase.h"

#include <QTest>

class tst_ModemLineWatch : public TestCase
{
    Q_OBJECT

private slots:
    void linesAsFoundAreNoChange_data();
    void linesAsFoundAreNoChange();
    void eachWatchedLineIsTold_data();
    void eachWatchedLineIsTold();
    void otherLinesAreNotTold();
    void refusedLinesCannotBeWatched();
    void linesThatFailLaterAreNoChange();
    void startTakesTheLinesAnew();
};

void tst_ModemLineWatch::linesAsFoundAreNoChange_data()
{
    QTest::addColumn<int>("found");
    QTest::newRow("all low") << 0;
    QTest::newRow("CTS high") << int(AbstractSerial::LineCTS);
    QTest::newRow("all high") << int(AbstractSerial::LineCTS | AbstractSerial::LineDSR
                                     | AbstractSerial::LineRI | AbstractSerial::LineDCD);
}

void tst_ModemLineWatch::linesAsFoundAreNoChange()
{
    QFETCH(int, found);
    ModemLineWatch watch([found] { return AbstractSerial::LineStatus::fromInt(found); });
    QVERIFY(watch.start());
    QVERIFY(!watch.hasChanged());
    QVERIFY(!watch.hasChanged());
}

void tst_ModemLineWatch::eachWatchedLineIsTold_data()
{
    QTest::addColumn<AbstractSerial::LineStatusFlag>("line");
    QTest::newRow("CTS") << AbstractSerial::LineCTS;
    QTest::newRow("DSR") << AbstractSerial::LineDSR;
    QTest::newRow("RI") << AbstractSerial::LineRI;
}

void tst_ModemLineWatch::eachWatchedLineIsTold()
{
    QFETCH(AbstractSerial::LineStatusFlag, line);
    AbstractSerial::LineStatus lines = AbstractSerial::LineDTR;
    ModemLineWatch watch([&lines] { return lines; });
    QVERIFY(watch.start());
    lines |= line;
    QVERIFY(watch.hasChanged());
    QVERIFY(!watch.hasChanged());
    lines &= ~AbstractSerial::LineStatus(line);
    QVERIFY(watch.hasChanged());
    QVERIFY(!watch.hasChanged());
}

void tst_ModemLineWatch::otherLinesAreNotTold()
{
    AbstractSerial::LineStatus lines;
    ModemLineWatch watch([&lines] { return lines; });
    QVERIFY(watch.start());
    for (const auto line :
         {AbstractSerial::LineDCD, AbstractSerial::LineDTR, AbstractSerial::LineRTS,
          AbstractSerial::LineLE, AbstractSerial::LineST, AbstractSerial::LineSR}) {
        lines |= line;
        QVERIFY(!watch.hasChanged());
    }
    lines |= AbstractSerial::LineCTS;
    QVERIFY(watch.hasChanged());
}

void tst_ModemLineWatch::refusedLinesCannotBeWatched()
{
    ModemLineWatch watch([] { return AbstractSerial::LineStatus(AbstractSerial::LineErr); });
    QVERIFY(!watch.start());
    QVERIFY(!watch.hasChanged());
}

void tst_ModemLineWatch::linesThatFailLaterAreNoChange()
{
    AbstractSerial::LineStatus lines = AbstractSerial::LineCTS;
    ModemLineWatch watch([&lines] { return lines; });
    QVERIFY(watch.start());
    lines = AbstractSerial::LineErr;
    QVERIFY(!watch.hasChanged());
    lines = AbstractSerial::LineCTS;
    QVERIFY(!watch.hasChanged());
    lines = {};
    QVERIFY(watch.hasChanged());
}

void tst_ModemLineWatch::startTakesTheLinesAnew()
{
    AbstractSerial::LineStatus lines;
    ModemLineWatch watch([&lines] { return lines; });
    QVERIFY(watch.start());
    lines = AbstractSerial::LineCTS;
    QVERIFY(watch.start());
    QVERIFY(!watch.hasChanged());
}

QTEST_GUILESS_MAIN(tst_ModemLineWatch)
#include "tst_ModemLineWatch.moc"
