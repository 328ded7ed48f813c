#include "panels/DialCoupling.h"
#include "support/TestCase.h"

#include <QDial>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

#include <limits>

namespace {

constexpr int Largest = std::numeric_limits<int>::max();
constexpr int Limit = 8000000;

/// A coupling with its dial and its spin box.
struct Coupled
{
    explicit Coupled(bool logarithmic, int limit = Limit)
        : coupling(&dial, &spinBox)
    {
        coupling.setLogarithmic(logarithmic);
        coupling.setLimit(limit);
    }

    QDial dial;
    QSpinBox spinBox;
    DialCoupling coupling;
};

} // namespace

class tst_DialCoupling : public TestCase
{
    Q_OBJECT

private slots:
    void limit_data();
    void limit();
    void spinBoxToDial_data();
    void spinBoxToDial();
    void dialToSpinBox_data();
    void dialToSpinBox();
    void setsWithoutSignals();
    void scaleChangesNoValue();
    void lowerLimitTells();
};

void tst_DialCoupling::limit_data()
{
    QTest::addColumn<bool>("logarithmic");
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("spinBoxMaximum");
    QTest::addColumn<int>("dialMaximum");
    const auto row = [](bool logarithmic, int limit, int dialMaximum) {
        QTest::addRow("%s %d", logarithmic ? "logarithmic" : "linear", limit)
            << logarithmic << limit << limit << dialMaximum;
    };
    row(false, 99, 99);
    row(false, Limit, Limit);
    row(false, Largest, Largest);
    row(false, 0, 0);
    row(false, -5, -5);
    row(true, Limit, 70);
    row(true, 10000000, 71);
    row(true, 1000, 31);
    row(true, 99, 21);
    row(true, 1, 1);
    row(true, Largest, 94);
    // No logarithm.
    row(true, 0, 0);
    row(true, -5, 0);
    row(true, std::numeric_limits<int>::min(), 0);
}

void tst_DialCoupling::limit()
{
    QFETCH(bool, logarithmic);
    QFETCH(int, limit);
    const Coupled scaleFirst(logarithmic, limit);
    QTEST(scaleFirst.spinBox.maximum(), "spinBoxMaximum");
    QTEST(scaleFirst.dial.maximum(), "dialMaximum");

    Coupled limitFirst(!logarithmic, limit);
    limitFirst.coupling.setLogarithmic(logarithmic);
    QTEST(limitFirst.spinBox.maximum(), "spinBoxMaximum");
    QTEST(limitFirst.dial.maximum(), "dialMaximum");
}

void tst_DialCoupling::spinBoxToDial_data()
{
    QTest::addColumn<bool>("logarithmic");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("step");
    const auto row = [](bool logarithmic, int value, int step) {
        QTest::addRow("%s %d", logarithmic ? "logarithmic" : "linear", value)
            << logarithmic << value << step;
    };
    for (const int value : {0, 1, 1000, Limit}) {
        row(false, value, value);
    }
    row(true, 0, 0); // minus infinity
    row(true, 1, 0);
    row(true, 2, 3);
    row(true, 9, 10); // 9.54
    row(true, 10, 10);
    row(true, 1000, 30);
    row(true, 5000, 37); // 36.99
    row(true, Limit, 69);
}

void tst_DialCoupling::spinBoxToDial()
{
    QFETCH(bool, logarithmic);
    QFETCH(int, value);
    Coupled coupled(logarithmic);
    coupled.dial.setValue(5);
    coupled.coupling.turnDial(value);
    QTEST(coupled.dial.value(), "step");
}

void tst_DialCoupling::dialToSpinBox_data()
{
    QTest::addColumn<bool>("logarithmic");
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("value");
    const auto row = [](bool logarithmic, int step, int value) {
        QTest::addRow("%s %d", logarithmic ? "logarithmic" : "linear", step)
            << logarithmic << step << value;
    };
    for (const int step : {0, 1, 1000, Limit}) {
        row(false, step, step);
    }
    row(true, 0, 0);
    row(true, 1, 0); // 0.26
    row(true, 2, 1); // 0.58
    row(true, 10, 9);
    row(true, 30, 999); // not the 1000 that stands there
    row(true, 69, 7943281);
    row(true, 70, Limit); // clamped from 9999999
    row(true, 94, Limit); // beyond the range of int
    row(true, Largest, Limit);
}

void tst_DialCoupling::dialToSpinBox()
{
    QFETCH(bool, logarithmic);
    QFETCH(int, step);
    Coupled coupled(logarithmic);
    coupled.spinBox.setValue(5);
    coupled.coupling.setSpinBox(step);
    QTEST(coupled.spinBox.value(), "value");
}

void tst_DialCoupling::setsWithoutSignals()
{
    Coupled coupled(false);
    QSignalSpy dial(&coupled.dial, &QDial::valueChanged);
    QSignalSpy spinBox(&coupled.spinBox, &QSpinBox::valueChanged);
    coupled.coupling.turnDial(50);
    coupled.coupling.setSpinBox(60);
    QCOMPARE(coupled.dial.value(), 50);
    QCOMPARE(coupled.spinBox.value(), 60);
    QVERIFY(dial.isEmpty());
    QVERIFY(spinBox.isEmpty());
    // Only for the call.
    coupled.dial.setValue(51);
    coupled.spinBox.setValue(61);
    QCOMPARE(dial.size(), 1);
    QCOMPARE(spinBox.size(), 1);
}

void tst_DialCoupling::scaleChangesNoValue()
{
    Coupled coupled(false);
    coupled.spinBox.setValue(1000);
    coupled.coupling.turnDial(1000);
    QSignalSpy dial(&coupled.dial, &QDial::valueChanged);
    coupled.coupling.setLogarithmic(true);
    QCOMPARE(coupled.spinBox.value(), 1000);
    QCOMPARE(coupled.dial.value(), 30);
    coupled.coupling.setLogarithmic(false);
    QCOMPARE(coupled.dial.value(), 1000);
    QVERIFY(dial.isEmpty());
}

void tst_DialCoupling::lowerLimitTells()
{
    Coupled coupled(false);
    coupled.spinBox.setValue(1000);
    QSignalSpy spinBox(&coupled.spinBox, &QSpinBox::valueChanged);
    coupled.coupling.setLimit(400);
    QCOMPARE(coupled.spinBox.value(), 400);
    QCOMPARE(spinBox, QList<QVariantList>{{400}});
}

QTEST_MAIN(tst_DialCoupling)
#include "tst_DialCoupling.moc"
