#pragma once

#include "serial/AbstractSerialEngine.h"
#include "serial/FakeDriver.h"
#include "serial/native/RecordingReceiver.h"

#include <QPointer>

/// An engine that has a port of a FakeDriver open, and whoever hears of it.
struct FakedLine
{
    explicit FakedLine(QIODevice::OpenMode mode = QIODevice::ReadWrite)
    {
        engine->setDeviceName(QStringLiteral("COM7"));
        engine->setReceiver(&receiver);
        isOpen = engine->open(mode);
        driver.takeCalls();
    }

    FakeDriver driver;
    RecordingReceiver receiver;
    QObject parent;
    QPointer<AbstractSerialEngine> engine = AbstractSerialEngine::createEngine(&parent);
    bool isOpen = false;
};
