#include "comm/Command.h"
#include "comm/CommandHandlerInterface.h"
#include "support/DebugLog.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QTest>

#include <cstddef>
#include <cstring>
#include <iterator>
#include <type_traits>

using namespace Qt::StringLiterals;

/// A transport to nowhere: all eleven operations, and nothing else.
class NullHandler : public CommandHandlerInterface
{
    Q_OBJECT
    Q_INTERFACES(CommandHandlerInterface)

public:
    void setBaudrate(int baudrate) override { storeBaudrate(baudrate); }
    void sendCommand(Command *) override { }
    Command *readReply(char) override { return nullptr; }
    SerialDeviceEnumerator *deviceEnumerator() override { return nullptr; }
    QString firmwareVersion(char) override { return {}; }
    QString versionText(char) override { return {}; }
    bool closeDevice() override
    {
        setConnected(false);
        return true;
    }
    bool reopenDevice() override
    {
        setConnected(true);
        return true;
    }

public slots:
    void getAxisParameter(char, char, char) override { }
    void doDirectRequest(Command *, Command *reply) override { reply->setValid(false); }
    void doDirectRequestWithoutAnswer(Command *) override { }
};

/// The state that both transports share, and the face that they show.
class tst_CommandHandlerInterface : public TestCase
{
    Q_OBJECT

private slots:
    void isAbstract();
    void operationsStandInOrder();
    void startsWithNothingOn();
    void switchesAreIndependent();
    void connectedAndBaudrate();
    void metaObject();
    void identifier();
    void timeoutedAddressesStandOnce();
    void timeoutedAddressIsASignedByte();
    void removingAnAddress();
    void dumpOfAnEmptyList();
    void dumpKeepsTheOrder();
};

void tst_CommandHandlerInterface::isAbstract()
{
    QVERIFY(std::is_abstract_v<CommandHandlerInterface>);
    QVERIFY(!std::is_abstract_v<NullHandler>); // so no twelfth operation is asked for
    QVERIFY((std::is_base_of_v<QObject, CommandHandlerInterface>));
}

namespace {

/// The place of a virtual operation among those of its class, in bytes: on this platform a pointer
/// to such a member begins with it.
template <typename Operation>
std::ptrdiff_t placeOf(Operation operation)
{
    std::ptrdiff_t place = 0;
    static_assert(sizeof operation >= sizeof place);
    std::memcpy(&place, &operation, sizeof place);
    return place;
}

} // namespace

void tst_CommandHandlerInterface::operationsStandInOrder()
{
    using H = CommandHandlerInterface;
    const std::ptrdiff_t places[] = {
        placeOf(&H::setBaudrate),
        placeOf(&H::sendCommand),
        placeOf(&H::readReply),
        placeOf(&H::deviceEnumerator),
        placeOf(&H::firmwareVersion),
        placeOf(&H::versionText),
        placeOf(&H::closeDevice),
        placeOf(&H::reopenDevice),
        placeOf(&H::getAxisParameter),
        placeOf(&H::doDirectRequest),
        placeOf(&H::doDirectRequestWithoutAnswer),
    };
    for (std::size_t i = 1; i < std::size(places); ++i) {
        QCOMPARE(places[i] - places[i - 1], std::ptrdiff_t(sizeof(void *)));
    }
}

void tst_CommandHandlerInterface::startsWithNothingOn()
{
    const NullHandler handler;
    QVERIFY(!handler.isConnected());
    QVERIFY(!handler.debugOutput());
    QCOMPARE(handler.baudrate(), 0);
    QVERIFY(!handler.logSetAxisParameter());
    QVERIFY(!handler.logGetAxisParameter());
    QVERIFY(!handler.logROX());
    QVERIFY(!handler.logMove());
    QVERIFY(!handler.logTrace());
    QVERIFY(!handler.logRequest());
    QVERIFY(!handler.isTimeoutedAddress(0));
    QCOMPARE(handler.parent(), nullptr);
}

namespace {

constexpr struct
{
    const char *name;
    void (CommandHandlerInterface::*set)(bool);
    bool (CommandHandlerInterface::*isSet)() const;
} Switches[] = {
    {"debugOutput", &CommandHandlerInterface::setDebugOutput,
     &CommandHandlerInterface::debugOutput},
    {"logSetAxisParameter", &CommandHandlerInterface::setLogSetAxisParameter,
     &CommandHandlerInterface::logSetAxisParameter},
    {"logGetAxisParameter", &CommandHandlerInterface::setLogGetAxisParameter,
     &CommandHandlerInterface::logGetAxisParameter},
    {"logROX", &CommandHandlerInterface::setLogROX, &CommandHandlerInterface::logROX},
    {"logMove", &CommandHandlerInterface::setLogMove, &CommandHandlerInterface::logMove},
    {"logTrace", &CommandHandlerInterface::setLogTrace, &CommandHandlerInterface::logTrace},
    {"logRequest", &CommandHandlerInterface::setLogRequest, &CommandHandlerInterface::logRequest},
};

} // namespace

void tst_CommandHandlerInterface::switchesAreIndependent()
{
    for (const auto &turned : Switches) {
        NullHandler handler;
        (handler.*turned.set)(true);
        for (const auto &entry : Switches) {
            QVERIFY2((handler.*entry.isSet)() == (&entry == &turned), entry.name);
        }
        (handler.*turned.set)(false);
        QVERIFY2(!(handler.*turned.isSet)(), turned.name);
    }
}

void tst_CommandHandlerInterface::connectedAndBaudrate()
{
    NullHandler handler;
    CommandHandlerInterface &transport = handler;
    transport.setBaudrate(115200);
    QCOMPARE(transport.baudrate(), 115200);
    QVERIFY(transport.reopenDevice());
    QVERIFY(transport.isConnected());
    QVERIFY(transport.closeDevice());
    QVERIFY(!transport.isConnected());
    QVERIFY(transport.closeDevice());
    QVERIFY(!transport.isConnected());
}

void tst_CommandHandlerInterface::metaObject()
{
    const QMetaObject &metaObject = CommandHandlerInterface::staticMetaObject;
    const QStringList slotsInOrder = {
        u"getAxisParameter(char address, char motorBank, char type)"_s,
        u"doDirectRequest(Command* request, Command* reply)"_s,
        u"doDirectRequestWithoutAnswer(Command* request)"_s,
    };
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Slot), slotsInOrder);
    QCOMPARE(metaObject.methodCount() - metaObject.methodOffset(), slotsInOrder.size());
}

void tst_CommandHandlerInterface::identifier()
{
    NullHandler handler;
    void *const interface = static_cast<CommandHandlerInterface *>(&handler);
    QCOMPARE(handler.qt_metacast("com.zdr.CommandHandler/1.0"), interface);
    QCOMPARE(handler.qt_metacast("NullHandler"), static_cast<void *>(&handler));
    QCOMPARE(handler.qt_metacast("CommandHandlerInterface"), interface);
    QCOMPARE(handler.qt_metacast("com.zdr.CommandHandler/1.1"), nullptr);

    // The interface's own answer knows nothing of the identifier.
    QCOMPARE(handler.CommandHandlerInterface::qt_metacast("CommandHandlerInterface"), interface);
    QCOMPARE(handler.CommandHandlerInterface::qt_metacast("com.zdr.CommandHandler/1.0"), nullptr);
    QCOMPARE(handler.CommandHandlerInterface::qt_metacast("NullHandler"), nullptr);

    QCOMPARE(qobject_interface_iid<CommandHandlerInterface *>(), "com.zdr.CommandHandler/1.0");
}

void tst_CommandHandlerInterface::timeoutedAddressesStandOnce()
{
    NullHandler handler;
    handler.addTimeoutedAddress(1);
    handler.addTimeoutedAddress(1);
    QVERIFY(handler.isTimeoutedAddress(1));
    QVERIFY(!handler.isTimeoutedAddress(2));
    handler.removeTimeoutedAddress(1);
    QVERIFY(!handler.isTimeoutedAddress(1));
}

void tst_CommandHandlerInterface::timeoutedAddressIsASignedByte()
{
    NullHandler handler;
    handler.addTimeoutedAddress(char(200));
    QVERIFY(handler.isTimeoutedAddress(-56));
    QVERIFY(!handler.isTimeoutedAddress(56));
}

void tst_CommandHandlerInterface::removingAnAddress()
{
    NullHandler handler;
    handler.addTimeoutedAddress(1);
    handler.addTimeoutedAddress(2);
    handler.removeTimeoutedAddress(3);
    QVERIFY(handler.isTimeoutedAddress(1));
    QVERIFY(handler.isTimeoutedAddress(2));
    handler.removeTimeoutedAddress(1);
    QVERIFY(!handler.isTimeoutedAddress(1));
    QVERIFY(handler.isTimeoutedAddress(2));
}

void tst_CommandHandlerInterface::dumpOfAnEmptyList()
{
    const NullHandler handler;
    const DebugLog log;
    handler.dumpTimeoutedAddresses();
    QCOMPARE(log.lines(), {u"CommandHandlerInterface::dumpTimeoutedAddresses() "_s});
}

void tst_CommandHandlerInterface::dumpKeepsTheOrder()
{
    NullHandler handler; // with debugOutput() off: the dump goes out all the same
    handler.addTimeoutedAddress(7);
    handler.addTimeoutedAddress(char(200));
    handler.addTimeoutedAddress(0);
    handler.addTimeoutedAddress(7);
    const DebugLog log;
    handler.dumpTimeoutedAddresses();
    const QStringList expected = {
        u"CommandHandlerInterface::dumpTimeoutedAddresses() "_s,
        u"Timeouted: \"7\""_s,
        u"Timeouted: \"-56\""_s,
        u"Timeouted: \"0\""_s,
    };
    QCOMPARE(log.lines(), expected);
}

QTEST_GUILESS_MAIN(tst_CommandHandlerInterface)
#include "tst_CommandHandlerInterface.moc"
