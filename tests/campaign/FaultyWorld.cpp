#include "campaign/FaultyWorld.h"

using namespace Qt::StringLiterals;

FaultyWorld::FaultyWorld()
    : m_plugs{{u"ttyACM0"_s, {}, 1, nullptr},
              {u"ttyUSB0"_s,
               {.vendor = "0403",
                .manufacturer = "FTDI",
                .product = "USB-RS485",
                .driver = "ftdi_sio"},
               Rs485Address,
               nullptr}}
    , m_bus(std::make_unique<SimulatedCanBus>())
{
    for (Plug &plug : m_plugs) {
        plugIn(plug);
    }
}

FaultyWorld::~FaultyWorld() = default;

void FaultyWorld::plugIn(Plug &plug)
{
    simulator::Identity identity;
    identity.address = static_cast<std::uint8_t>(plug.address);
    plug.port = std::make_unique<SimulatedPort>(identity);
    m_machine.plugIn(plug.name, plug.device, plug.port->portName());
}

void FaultyWorld::pullOut(Plug &plug)
{
    m_machine.pullOut(plug.name);
    plug.port.reset();
}

QString FaultyWorld::happen(Random &random)
{
    switch (random.below(12)) {
    case 0:
        return movePlug(random);
    case 1:
        return moveCan();
    case 2:
    case 3:
    case 4:
        return injectCanFault(random);
    case 5:
    case 6:
        return changeParameter(random);
    default:
        return injectFault(random);
    }
}

QString FaultyWorld::movePlug(Random &random)
{
    Plug &plug = m_plugs[random.below(std::size(m_plugs))];
    if (plug.port) {
        pullOut(plug);
        return u"unplug "_s + plug.name;
    }
    plugIn(plug);
    return u"plug "_s + plug.name;
}

QString FaultyWorld::moveCan()
{
    if (m_bus) {
        m_bus.reset();
        return u"unplug can"_s;
    }
    m_bus = std::make_unique<SimulatedCanBus>();
    return u"plug can"_s;
}

QString FaultyWorld::injectFault(Random &random)
{
    static const QStringList faults = {
        u"off"_s,         u"off"_s,           u"silence 1"_s,  u"silence 20"_s, u"delay 3 4"_s,
        u"late 30 2"_s,   u"short 2"_s,       u"long 2"_s,     u"doubled 2"_s,  u"checksum 3"_s,
        u"garbage 5 2"_s, u"garbage 300 1"_s, u"status 2 3"_s,
    };
    Plug &plug = m_plugs[random.below(std::size(m_plugs))];
    const QString &fault = random.of(faults);
    if (plug.port) {
        plug.port->fault(fault);
    }
    return u"fault of "_s + plug.name + u": "_s + fault;
}

QString FaultyWorld::injectCanFault(Random &random)
{
    static const QStringList faults = {
        u"off"_s,
        u"off"_s,
        u"no-channel 2"_s,
        u"speed-refused 1"_s,
        u"on-refused 1"_s,
        u"off-refused 1"_s,
        u"close-refused 1"_s,
        u"foreign 5 2"_s,
        u"module-id 200 2"_s,
    };
    const QString &fault = random.of(faults);
    if (m_bus) {
        m_bus->canFault(fault);
        m_bus->fault(random.oneIn(2) ? u"off"_s : u"silence 2"_s);
    }
    return u"fault of can: "_s + fault;
}

QString FaultyWorld::changeParameter(Random &random)
{
    Plug &plug = m_plugs[random.below(std::size(m_plugs))];
    const int parameter = random.below(256);
    const int value = random.number();
    if (plug.port) {
        plug.port->module().setAxisParameter(static_cast<std::uint8_t>(parameter), value);
    }
    return u"parameter %1 of %2 becomes %3"_s.arg(parameter).arg(plug.name).arg(value);
}
