#include "app/WTraceController.h"
#include "comm/TraceCommand.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QXmlStreamReader>

#include <memory>

using namespace Qt::StringLiterals;

/// The panel, its list and its passes, while nothing ticks.
class tst_WTraceController : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void signalsAndSlots();
    void form();
    void valuesInTheForm();
    void valuesAfterConstruction();
    void parentOwnsIt();

    void delaySettings();
    void delayIsTyped();
    void delayBelowTheMinimumCannotBeTyped();

    void commandsInTheList();
    void equalCommandIsLeftOut();
    void differentCommandIsAppended_data();
    void differentCommandIsAppended();
    void clearedCommandsLiveOn();
    void listStaysTheSameObject();

    void passGoesToEachReceiverInTurn();
    void passOfAnEmptyList();

private:
    QPushButton *button(const QString &name)
    {
        return m_controller->findChild<QPushButton *>(name);
    }
    QSpinBox *spinBox() { return m_controller->findChild<QSpinBox *>(u"sbDelay"_s); }

    std::unique_ptr<WTraceController> m_controller;
};

void tst_WTraceController::init()
{
    TestCase::init();
    m_controller = std::make_unique<WTraceController>();
}

void tst_WTraceController::cleanup()
{
    m_controller.reset();
}

void tst_WTraceController::signalsAndSlots()
{
    const QMetaObject &metaObject = WTraceController::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Signal),
             QStringList({u"start()"_s, u"stop()"_s, u"delayChanged(int delay)"_s,
                          u"requestTraceValues(QList<TraceCommand*>* traceCommands)"_s,
                          u"requestPDOValues()"_s}));
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Slot),
             QStringList({u"on_btnStart_clicked()"_s, u"on_btnStop_clicked()"_s,
                          u"on_sbDelay_valueChanged(int value)"_s, u"requestTraceValues()"_s,
                          u"activateTracing()"_s, u"deactivateTracing()"_s}));
}

void tst_WTraceController::form()
{
    const WTraceController controller;
    QCOMPARE(controller.size(), QSize(204, 120));
    QCOMPARE(controller.maximumSize(), QSize(204, 120));
    const auto *groupBox = controller.findChild<QGroupBox *>(u"gbTraceController"_s);
    QVERIFY(groupBox);
    QCOMPARE(groupBox->title(), u"Trace controller"_s);
    const auto *label = groupBox->findChild<QLabel *>(u"lblDelay"_s);
    QVERIFY(label);
    QCOMPARE(label->text(), u"Delay [ms]"_s);
    const auto *delay = groupBox->findChild<QSpinBox *>(u"sbDelay"_s);
    QVERIFY(delay);
    const auto *start = groupBox->findChild<QPushButton *>(u"btnStart"_s);
    QVERIFY(start);
    QCOMPARE(start->text(), u"Start"_s);
    const auto *stop = groupBox->findChild<QPushButton *>(u"btnStop"_s);
    QVERIFY(stop);
    QCOMPARE(stop->text(), u"Stop"_s);
    // All of it finds room.
    const QSize least = controller.minimumSizeHint();
    QVERIFY2(least.width() <= 204 && least.height() <= 120,
             qPrintable(u"%1x%2"_s.arg(least.width()).arg(least.height())));
}

/// The constructor overwrites the value before anyone can see it on a widget.
void tst_WTraceController::valuesInTheForm()
{
    QFile file(QFINDTESTDATA("../../src/app/forms/WTraceController.ui"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    QString object;
    QString property;
    QStringList values;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        const QString name = xml.attributes().value("name"_L1).toString();
        if (xml.name() == "widget"_L1) {
            object = name;
        } else if (xml.name() == "property"_L1) {
            property = name;
        } else if (xml.name() == "number"_L1 && object == u"sbDelay"_s) {
            values.append(property + u' ' + xml.readElementText());
        }
    }
    QCOMPARE(values, QStringList({u"maximum 100000"_s, u"value 20"_s}));
}

void tst_WTraceController::valuesAfterConstruction()
{
    QCOMPARE(spinBox()->value(), 100);
    QCOMPARE(spinBox()->singleStep(), 1);
    QCOMPARE(spinBox()->maximum(), 100'000);
    QVERIFY(button(u"btnStart"_s)->isEnabled());
    QVERIFY(!button(u"btnStop"_s)->isEnabled());
    QVERIFY(m_controller->traceCommands());
    QVERIFY(m_controller->traceCommands()->isEmpty());
}

void tst_WTraceController::parentOwnsIt()
{
    auto parent = std::make_unique<QWidget>();
    const QPointer<WTraceController> controller = new WTraceController(parent.get());
    QCOMPARE(controller->parentWidget(), parent.get());
    parent.reset();
    QVERIFY(!controller);
}

void tst_WTraceController::delaySettings()
{
    QSignalSpy delays(m_controller.get(), &WTraceController::delayChanged);
    m_controller->setDelay(300);
    QCOMPARE(spinBox()->value(), 300);
    m_controller->setDelay(300); // no change
    m_controller->setDelayMinimum(200);
    QCOMPARE(spinBox()->minimum(), 200);
    m_controller->setDelayMinimum(400);
    m_controller->setDelayMaximum(350);
    QCOMPARE(spinBox()->maximum(), 350);
    m_controller->setDelayMaximum(500);
    m_controller->setDelay(501); // the range holds
    m_controller->setDelayStep(7);
    QCOMPARE(spinBox()->singleStep(), 7);
    spinBox()->stepDown();
    QCOMPARE(delays, QList<QVariantList>({{300}, {400}, {350}, {500}, {493}}));
}

void tst_WTraceController::delayIsTyped()
{
    m_controller->setDelayMinimum(200);
    m_controller->setDelay(300);
    QSignalSpy delays(m_controller.get(), &WTraceController::delayChanged);
    spinBox()->selectAll();
    QTest::keyClicks(spinBox(), u"100000"_s);
    QTest::keyClick(spinBox(), Qt::Key_Return);
    QCOMPARE(spinBox()->value(), 100'000);
    QCOMPARE(delays.constLast(), QVariantList({100'000}));
    QTest::keyClick(spinBox(), Qt::Key_Up);
    QCOMPARE(spinBox()->value(), 100'000);
    QTest::keyClick(spinBox(), Qt::Key_Down);
    QCOMPARE(delays.constLast(), QVariantList({99'999}));
}

void tst_WTraceController::delayBelowTheMinimumCannotBeTyped()
{
    m_controller->setDelayMinimum(200);
    m_controller->setDelay(300);
    QSignalSpy delays(m_controller.get(), &WTraceController::delayChanged);
    spinBox()->selectAll();
    QTest::keyClicks(spinBox(), u"150"_s);
    QTest::keyClick(spinBox(), Qt::Key_Return);
    QVERIFY(spinBox()->value() >= 200);
    for (const QVariantList &delay : std::as_const(delays)) {
        QVERIFY(delay.constFirst().toInt() >= 200);
    }
}

void tst_WTraceController::commandsInTheList()
{
    TraceCommand first(1, 6, 4, 0);
    TraceCommand second(1, 6, char(206), 0);
    m_controller->addTraceCommand(&first);
    m_controller->addTraceCommand(&second);
    QCOMPARE(*m_controller->traceCommands(), QList<TraceCommand *>({&first, &second}));
}

/// The name plays no part, and that of the second is lost.
void tst_WTraceController::equalCommandIsLeftOut()
{
    TraceCommand first(1, 0, 6, 4, QString());
    TraceCommand second(1, 0, 6, 4, u"Velocity"_s);
    m_controller->addTraceCommand(&first);
    m_controller->addTraceCommand(&second);
    m_controller->addTraceCommand(&first);
    QCOMPARE(*m_controller->traceCommands(), QList<TraceCommand *>({&first}));
    QCOMPARE(first.name(), QString());
    QCOMPARE(first.count(), 1);
    QCOMPARE(second.count(), 1);
    QCOMPARE(second.name(), u"Velocity"_s); // it was not deleted
}

void tst_WTraceController::differentCommandIsAppended_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("motorBank");
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("type");
    QTest::newRow("address") << 2 << 0 << 6 << 4;
    QTest::newRow("motor bank") << 1 << 1 << 6 << 4;
    QTest::newRow("command") << 1 << 0 << 10 << 4;
    QTest::newRow("type") << 1 << 0 << 6 << 132;
}

void tst_WTraceController::differentCommandIsAppended()
{
    QFETCH(const int, address);
    QFETCH(const int, motorBank);
    QFETCH(const int, command);
    QFETCH(const int, type);
    TraceCommand first(1, 0, 6, 4, u"Name"_s);
    TraceCommand second(char(address), char(motorBank), char(command), char(type), u"Name"_s);
    m_controller->addTraceCommand(&first);
    m_controller->addTraceCommand(&second);
    QCOMPARE(*m_controller->traceCommands(), QList<TraceCommand *>({&first, &second}));
}

void tst_WTraceController::clearedCommandsLiveOn()
{
    TraceCommand first(1, 0, 6, 4, u"Velocity"_s);
    TraceCommand second(1, 0, 6, 1, u"Position"_s);
    m_controller->addTraceCommand(&first);
    m_controller->addTraceCommand(&second);
    m_controller->clearTraceCommands();
    QVERIFY(m_controller->traceCommands()->isEmpty());
    QCOMPARE(first.name(), u"Velocity"_s);
    m_controller->addTraceCommand(&second);
    m_controller->addTraceCommand(&first);
    QCOMPARE(*m_controller->traceCommands(), QList<TraceCommand *>({&second, &first}));
}

void tst_WTraceController::listStaysTheSameObject()
{
    const QList<TraceCommand *> *list = m_controller->traceCommands();
    QList<const QList<TraceCommand *> *> carried;
    QList<QList<TraceCommand *>> contents;
    connect(m_controller.get(),
            qOverload<QList<TraceCommand *> *>(&WTraceController::requestTraceValues), this,
            [&](QList<TraceCommand *> *traceCommands) {
                carried.append(traceCommands);
                contents.append(*traceCommands);
            });
    TraceCommand first(1, 6, 4, 0);
    TraceCommand second(1, 6, 5, 0);
    m_controller->requestTraceValues();
    m_controller->addTraceCommand(&first);
    m_controller->requestTraceValues();
    m_controller->clearTraceCommands();
    m_controller->addTraceCommand(&second);
    m_controller->addTraceCommand(&first);
    m_controller->requestTraceValues();
    QCOMPARE(m_controller->traceCommands(), list);
    QCOMPARE(carried, QList<const QList<TraceCommand *> *>(3, list));
    QCOMPARE(contents, QList<QList<TraceCommand *>>({{}, {&first}, {&second, &first}}));
}

void tst_WTraceController::passGoesToEachReceiverInTurn()
{
    QStringList order;
    const auto pass = qOverload<QList<TraceCommand *> *>(&WTraceController::requestTraceValues);
    for (const QString &receiver : {u"serial"_s, u"can"_s}) {
        connect(m_controller.get(), pass, this, [&order, receiver] {
            order.append(receiver + u" begins"_s);
            order.append(receiver + u" ends"_s);
        });
    }
    connect(m_controller.get(), &WTraceController::requestPDOValues, this,
            [&order] { order.append(u"end"_s); });
    m_controller->requestTraceValues();
    const QStringList onePass = {u"serial begins"_s, u"serial ends"_s, u"can begins"_s,
                                 u"can ends"_s, u"end"_s};
    QCOMPARE(order, onePass);
    m_controller->requestTraceValues();
    QCOMPARE(order, onePass + onePass);
}

void tst_WTraceController::passOfAnEmptyList()
{
    QSignalSpy ends(m_controller.get(), &WTraceController::requestPDOValues);
    m_controller->requestTraceValues();
    QCOMPARE(ends.size(), 1);
}

QTEST_MAIN(tst_WTraceController)
#include "tst_WTraceController.moc"
