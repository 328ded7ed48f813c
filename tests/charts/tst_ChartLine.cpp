#include "charts/ChartLine.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

ChartLine newLine()
{
    return ChartLine(1, 2, 6, 230, u"gamma"_s, Qt::blue);
}

/// A line with the samples 1 to @p count.
ChartLine lineWith(int count)
{
    ChartLine line = newLine();
    for (int i = 1; i <= count; ++i) {
        line.addValue(i);
    }
    return line;
}

/// For comparisons: the toolkit's own of two empty lists of numbers is undefined in detail.
QVariantList samplesOf(const ChartLine &line)
{
    return QVariantList(line.samples().cbegin(), line.samples().cend());
}

} // namespace

class tst_ChartLine : public TestCase
{
    Q_OBJECT

private slots:
    void start();
    void setAddress();
    void key_data();
    void key();
    void smoothed();
    void limit();
    void setMaxSamples_data();
    void setMaxSamples();
    void limitBelowOneStays_data();
    void limitBelowOneStays();
    void clearValues();
};

void tst_ChartLine::start()
{
    const ChartLine line = newLine();
    QCOMPARE(line.address(), quint8(1));
    QCOMPARE(line.motorBank(), quint8(2));
    QCOMPARE(line.command(), quint8(6));
    QCOMPARE(line.type(), quint8(230));
    QCOMPARE(line.name(), u"gamma"_s);
    QCOMPARE(line.samples(), QList<double>());
    QCOMPARE(line.smoothed(), 0.0);
    QCOMPARE(line.color(), QColor(Qt::blue));
    QCOMPARE(line.maxSamples(), 100);
}

void tst_ChartLine::setAddress()
{
    ChartLine line = lineWith(2);
    line.setAddress(255);
    QCOMPARE(line.address(), quint8(255));
    QVERIFY(line.hasKey(255, 2, 6, 230));
    QCOMPARE(line.samples(), (QList<double>{1, 2}));
}

void tst_ChartLine::key_data()
{
    QTest::addColumn<QList<int>>("key");
    QTest::addColumn<bool>("isThatOfTheLine");
    QTest::newRow("same") << QList<int>{1, 2, 6, 230} << true;
    QTest::newRow("address") << QList<int>{2, 2, 6, 230} << false;
    QTest::newRow("motor bank") << QList<int>{1, 1, 6, 230} << false;
    QTest::newRow("command") << QList<int>{1, 2, 5, 230} << false;
    QTest::newRow("type") << QList<int>{1, 2, 6, 102} << false;
}

void tst_ChartLine::key()
{
    QFETCH(QList<int>, key);
    QFETCH(bool, isThatOfTheLine);
    QCOMPARE(newLine().hasKey(static_cast<quint8>(key.at(0)), static_cast<quint8>(key.at(1)),
                              static_cast<quint8>(key.at(2)), static_cast<quint8>(key.at(3))),
             isThatOfTheLine);
}

void tst_ChartLine::smoothed()
{
    ChartLine line = newLine();
    line.addValue(100);
    QCOMPARE(line.smoothed(), 20.0);
    line.addValue(-50);
    QCOMPARE(line.smoothed(), 6.0); // 20 - 4 - 10
    line.setMaxSamples(1); // forgetting samples doesn't touch it
    QCOMPARE(line.smoothed(), 6.0);
}

void tst_ChartLine::limit()
{
    const ChartLine line = lineWith(250);
    QCOMPARE(line.samples().size(), 100);
    QCOMPARE(line.samples().first(), 151.0);
    QCOMPARE(line.samples().last(), 250.0);
}

void tst_ChartLine::setMaxSamples_data()
{
    QTest::addColumn<int>("limit");
    QTest::addColumn<QVariantList>("left");
    QTest::addColumn<QVariantList>("afterOneMore");
    QTest::newRow("wide") << 5 << QVariantList{1, 2, 3} << QVariantList{1, 2, 3, 4};
    QTest::newRow("just enough") << 3 << QVariantList{1, 2, 3} << QVariantList{2, 3, 4};
    QTest::newRow("narrow") << 2 << QVariantList{2, 3} << QVariantList{3, 4};
    QTest::newRow("none") << 0 << QVariantList() << QVariantList();
    QTest::newRow("negative") << -1 << QVariantList() << QVariantList();
    QTest::newRow("least int") << std::numeric_limits<int>::min() << QVariantList()
                               << QVariantList();
    QTest::newRow("largest int") << std::numeric_limits<int>::max() << QVariantList{1, 2, 3}
                                 << QVariantList{1, 2, 3, 4};
}

void tst_ChartLine::setMaxSamples()
{
    QFETCH(int, limit);
    ChartLine line = lineWith(3);
    line.setMaxSamples(limit);
    QCOMPARE(line.maxSamples(), limit);
    QTEST(samplesOf(line), "left");
    line.addValue(4);
    QTEST(samplesOf(line), "afterOneMore");
}

void tst_ChartLine::limitBelowOneStays_data()
{
    QTest::addColumn<int>("limit");
    QTest::newRow("0") << 0;
    QTest::newRow("-1") << -1;
}

void tst_ChartLine::limitBelowOneStays()
{
    QFETCH(int, limit);
    ChartLine line = newLine();
    line.setMaxSamples(limit);
    line.setMaxSamples(10);
    QCOMPARE(line.maxSamples(), limit);
}

void tst_ChartLine::clearValues()
{
    ChartLine line = lineWith(1);
    line.clearValues();
    QCOMPARE(line.samples(), QList<double>());
    QCOMPARE(line.smoothed(), 0.2);
    QCOMPARE(line.maxSamples(), 100);
}

QTEST_GUILESS_MAIN(tst_ChartLine)
#include "tst_ChartLine.moc"
