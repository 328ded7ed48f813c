#include "panels/SaturatedInt.h"
#include "support/TestCase.h"

#include <QTest>

using namespace SaturatedInt;

class tst_SaturatedInt : public TestCase
{
    Q_OBJECT

private slots:
    void magnitudes();
    void sums();
};

void tst_SaturatedInt::magnitudes()
{
    QCOMPARE(magnitude(0), 0);
    QCOMPARE(magnitude(5), 5);
    QCOMPARE(magnitude(-5), 5);
    QCOMPARE(magnitude(Largest), Largest);
    QCOMPARE(magnitude(-Largest), Largest);
    QCOMPARE(magnitude(std::numeric_limits<int>::min()), Largest);
}

void tst_SaturatedInt::sums()
{
    QCOMPARE(sum(2, -5), -3);
    QCOMPARE(sum(Largest - 1, 1), Largest);
    QCOMPARE(sum(Largest, 1), Largest);
    QCOMPARE(sum(-Largest, -1), -Largest);
    QCOMPARE(sum(-Largest, Largest), 0);
    QCOMPARE(saturated(std::numeric_limits<qint64>::max()), Largest);
    QCOMPARE(saturated(std::numeric_limits<qint64>::min()), -Largest);
}

QTEST_GUILESS_MAIN(tst_SaturatedInt)
#include "tst_SaturatedInt.moc"
