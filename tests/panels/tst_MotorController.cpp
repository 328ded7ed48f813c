#include "panels/MotorController.h"
#include "support/TestCase.h"

#include <QTest>

#include <type_traits>

namespace {

struct Controller : MotorController
{
    using MotorController::isFrom;
};

} // namespace

class tst_MotorController : public TestCase
{
    Q_OBJECT

private slots:
    void startValues();
    void setters();
    void plainBase();
    void isFrom_data();
    void isFrom();
};

void tst_MotorController::startValues()
{
    const Controller controller;
    QCOMPARE(int{controller.address()}, 1);
    QCOMPARE(int{controller.motor()}, 0);
}

void tst_MotorController::setters()
{
    Controller controller;
    controller.setAddress(static_cast<char>(200));
    controller.setMotor(3);
    QCOMPARE(int{controller.address()}, -56);
    QCOMPARE(int{controller.motor()}, 3);
}

void tst_MotorController::plainBase()
{
    QVERIFY(!std::is_polymorphic_v<MotorController>);
}

void tst_MotorController::isFrom_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("motor");
    QTest::addColumn<bool>("expected");
    QTest::newRow("both") << 129 << 2 << true;
    QTest::newRow("another address") << 128 << 2 << false;
    QTest::newRow("another motor") << 129 << 1 << false;
    QTest::newRow("turned round") << 2 << 129 << false;
}

void tst_MotorController::isFrom()
{
    QFETCH(int, address);
    QFETCH(int, motor);
    Controller controller;
    controller.setAddress(static_cast<char>(129));
    controller.setMotor(2);
    QTEST(controller.isFrom(static_cast<char>(address), static_cast<char>(motor)), "expected");
}

QTEST_GUILESS_MAIN(tst_MotorController)
#include "tst_MotorController.moc"
