#include "serial/FakeDriver.h"

#include <algorithm>
#include <cstring>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

FakeDriver *driver = nullptr;

// Of the kit for drivers, and of no other header.
constexpr ULONG_PTR Success = 0;
constexpr ULONG_PTR Cancelled = 0xC0000120;

const auto Port = reinterpret_cast<HANDLE>(0x7710);

QString hex(DWORD number)
{
    return QString::number(number, 16);
}

} // namespace

/// The functions that stand in for those of Windows.
struct DriverFunctions
{
    static HANDLE WINAPI createFile(const wchar_t *name, DWORD access, DWORD sharing,
                                    SECURITY_ATTRIBUTES *, DWORD creation, DWORD flags, HANDLE)
    {
        const QString arguments = u"%1 access %2 sharing %3 creation %4 flags %5"_s.arg(
            QString::fromWCharArray(name), hex(access), hex(sharing), hex(creation), hex(flags));
        return driver->enter("CreateFileW", arguments) ? Port : INVALID_HANDLE_VALUE;
    }
    static HANDLE WINAPI createEvent(SECURITY_ATTRIBUTES *, BOOL manual, BOOL signalled,
                                     const wchar_t *name)
    {
        const QString arguments = u"%1 %2 %3"_s.arg(manual).arg(signalled).arg(name != nullptr);
        // By another function than the one that leads here.
        return driver->enter("CreateEventW", arguments)
            ? CreateEventExW(nullptr, nullptr, 0, EVENT_ALL_ACCESS)
            : nullptr;
    }
    static BOOL WINAPI closeHandle(HANDLE handle)
    {
        if (!driver->enter("CloseHandle", handle == Port ? u"port"_s : u"event"_s)) {
            return FALSE;
        }
        return handle == Port || driver->m_closeHandle(handle);
    }
    static BOOL WINAPI cancelIo(HANDLE)
    {
        driver->endAll();
        return driver->enter("CancelIo");
    }
    static BOOL WINAPI getCommState(HANDLE, DCB *line)
    {
        *line = driver->line;
        return driver->enter("GetCommState");
    }
    static BOOL WINAPI setCommState(HANDLE, DCB *line)
    {
        if (!driver->enter("SetCommState")) {
            return FALSE;
        }
        driver->line = *line;
        return TRUE;
    }
    static BOOL WINAPI getCommTimeouts(HANDLE, COMMTIMEOUTS *timeouts)
    {
        *timeouts = driver->timeouts;
        return driver->enter("GetCommTimeouts");
    }
    static BOOL WINAPI setCommTimeouts(HANDLE, COMMTIMEOUTS *timeouts)
    {
        const QString arguments = u"%1 %2 %3 %4 %5"_s.arg(timeouts->ReadIntervalTimeout)
                                      .arg(timeouts->ReadTotalTimeoutMultiplier)
                                      .arg(timeouts->ReadTotalTimeoutConstant)
                                      .arg(timeouts->WriteTotalTimeoutMultiplier)
                                      .arg(timeouts->WriteTotalTimeoutConstant);
        driver->timeouts = *timeouts;
        return driver->enter("SetCommTimeouts", arguments);
    }
    static BOOL WINAPI readFile(HANDLE, void *data, DWORD size, DWORD *, OVERLAPPED *record)
    {
        if (!driver->enter("ReadFile", QString::number(size))) {
            return FALSE;
        }
        return driver->start(driver->m_transfers, record, [data, size] {
            const auto count = std::min<qsizetype>(size, driver->received.size());
            std::memcpy(data, driver->received.constData(), static_cast<std::size_t>(count));
            driver->received.remove(0, count);
            return static_cast<DWORD>(count);
        });
    }
    static BOOL WINAPI writeFile(HANDLE, const void *data, DWORD size, DWORD *, OVERLAPPED *record)
    {
        if (!driver->enter("WriteFile", QString::number(size))) {
            return FALSE;
        }
        return driver->start(driver->m_transfers, record, [data, size] {
            const auto count = std::min<qsizetype>(size, driver->room);
            driver->sent.append(static_cast<const char *>(data), count);
            driver->room -= count;
            return static_cast<DWORD>(count);
        });
    }
    static BOOL WINAPI getOverlappedResult(HANDLE, OVERLAPPED *record, DWORD *count, BOOL wait)
    {
        if (!driver->enter("GetOverlappedResult", wait ? u"waits"_s : QString())
            || FakeDriver::isPending(record)) {
            return FALSE;
        }
        *count = static_cast<DWORD>(record->InternalHigh);
        return TRUE;
    }
    static DWORD WINAPI waitForSingleObject(HANDLE event, DWORD msecs)
    {
        driver->enter("WaitForSingleObject", QString::number(msecs));
        if (driver->ending == FakeDriver::Ending::TooLate) {
            return WAIT_TIMEOUT;
        }
        // The first of those that this event belongs to, which may be one that was given up before.
        for (QList<FakeDriver::Operation> *operations : {&driver->m_transfers, &driver->m_waits}) {
            const auto first = std::find_if(
                operations->cbegin(), operations->cend(),
                [event](const auto &operation) { return operation.record->hEvent == event; });
            if (first != operations->cend()) {
                FakeDriver::end(operations->takeAt(first - operations->cbegin()), Success);
            }
        }
        return WAIT_OBJECT_0;
    }
    static BOOL WINAPI clearCommError(HANDLE, DWORD *errors, COMSTAT *queues)
    {
        *errors = std::exchange(driver->errors, 0);
        queues->cbInQue = static_cast<DWORD>(driver->received.size());
        return driver->enter("ClearCommError");
    }
    static BOOL WINAPI getCommMask(HANDLE, DWORD *mask)
    {
        *mask = driver->mask;
        return driver->enter("GetCommMask");
    }
    static BOOL WINAPI setCommMask(HANDLE, DWORD mask)
    {
        driver->endWait(0);
        driver->mask = mask;
        return driver->enter("SetCommMask", QString::number(mask));
    }
    static BOOL WINAPI waitCommEvent(HANDLE, DWORD *events, OVERLAPPED *record)
    {
        if (!driver->enter("WaitCommEvent")) {
            return FALSE;
        }
        if (driver->isWaitPending()) { // a port has one wait at a time
            SetLastError(ERROR_INVALID_PARAMETER);
            return FALSE;
        }
        driver->m_waits.clear();
        return driver->start(driver->m_waits, record, [events]() -> DWORD {
            *events = std::exchange(driver->events, 0);
            return sizeof *events;
        });
    }
    static BOOL WINAPI purgeComm(HANDLE, DWORD flags)
    {
        return driver->enter("PurgeComm", QString::number(flags));
    }
    static BOOL WINAPI flushFileBuffers(HANDLE) { return driver->enter("FlushFileBuffers"); }
    static BOOL WINAPI setCommBreak(HANDLE) { return driver->enter("SetCommBreak"); }
    static BOOL WINAPI clearCommBreak(HANDLE) { return driver->enter("ClearCommBreak"); }
    static BOOL WINAPI escapeCommFunction(HANDLE, DWORD function)
    {
        return driver->enter("EscapeCommFunction", QString::number(function));
    }
    static BOOL WINAPI getCommModemStatus(HANDLE, DWORD *lines)
    {
        *lines = driver->inputLines;
        return driver->enter("GetCommModemStatus");
    }
    static BOOL WINAPI deviceIoControl(HANDLE, DWORD code, void *, DWORD, void *lines, DWORD size,
                                       DWORD *, OVERLAPPED *record)
    {
        if (!driver->enter("DeviceIoControl", u"%1 %2"_s.arg(code).arg(size))) {
            return FALSE;
        }
        return driver->start(driver->m_transfers, record, [lines, size] {
            std::memcpy(lines, &driver->outputLines, size);
            return size;
        });
    }
};

FakeDriver::FakeDriver()
{
    line.DCBlength = sizeof line;
    line.BaudRate = 9600;
    line.ByteSize = 8;
    driver = this;
    using F = DriverFunctions;
    const auto lead = [this](const char *name, auto *function) -> const ImportedFunction & {
        m_functions.push_back(
            std::make_unique<ImportedFunction>(nullptr, name, reinterpret_cast<void *>(function)));
        return *m_functions.back();
    };
    lead("CreateFileW", &F::createFile);
    lead("CreateEventW", &F::createEvent);
    m_closeHandle =
        reinterpret_cast<decltype(m_closeHandle)>(lead("CloseHandle", &F::closeHandle).original());
    lead("CancelIo", &F::cancelIo);
    lead("GetCommState", &F::getCommState);
    lead("SetCommState", &F::setCommState);
    lead("GetCommTimeouts", &F::getCommTimeouts);
    lead("SetCommTimeouts", &F::setCommTimeouts);
    lead("ReadFile", &F::readFile);
    lead("WriteFile", &F::writeFile);
    lead("GetOverlappedResult", &F::getOverlappedResult);
    lead("WaitForSingleObject", &F::waitForSingleObject);
    lead("ClearCommError", &F::clearCommError);
    lead("GetCommMask", &F::getCommMask);
    lead("SetCommMask", &F::setCommMask);
    lead("WaitCommEvent", &F::waitCommEvent);
    lead("PurgeComm", &F::purgeComm);
    lead("FlushFileBuffers", &F::flushFileBuffers);
    lead("SetCommBreak", &F::setCommBreak);
    lead("ClearCommBreak", &F::clearCommBreak);
    lead("EscapeCommFunction", &F::escapeCommFunction);
    lead("GetCommModemStatus", &F::getCommModemStatus);
    lead("DeviceIoControl", &F::deviceIoControl);
}

FakeDriver::~FakeDriver()
{
    m_functions.clear();
    driver = nullptr;
}

QStringList FakeDriver::takeCalls()
{
    return std::exchange(m_calls, {});
}

void FakeDriver::endWait(DWORD found)
{
    if (isWaitPending()) {
        const DWORD others = std::exchange(events, found);
        end(m_waits.takeFirst(), Success);
        events = others;
    }
}

bool FakeDriver::isPending(const OVERLAPPED *record)
{
    return record->Internal == STATUS_PENDING;
}

/// Notes a call. False if the function is to fail, with its error set.
bool FakeDriver::enter(const char *function, const QString &arguments)
{
    m_calls << QLatin1StringView(function) + (arguments.isEmpty() ? arguments : u' ' + arguments);
    if (!fails(function)) {
        return true;
    }
    SetLastError(ERROR_GEN_FAILURE);
    return false;
}

bool FakeDriver::fails(const QByteArray &function)
{
    const auto call = m_failingCalls.find(function);
    const bool isTheOne = call != m_failingCalls.end() && --*call == 0;
    return isTheOne || failing.contains(function);
}

BOOL FakeDriver::start(QList<Operation> &operations, OVERLAPPED *record,
                       std::function<DWORD()> finish)
{
    operations << Operation{record, std::move(finish)};
    record->Internal = STATUS_PENDING;
    if (ending == Ending::AtOnce) {
        end(operations.takeLast(), Success);
        return TRUE;
    }
    SetLastError(ERROR_IO_PENDING);
    return FALSE;
}

void FakeDriver::end(const Operation &ended, ULONG_PTR status)
{
    if (!isPending(ended.record)) {
        return;
    }
    ended.record->InternalHigh = status == Success ? ended.finish() : 0;
    ended.record->Internal = status;
    SetEvent(ended.record->hEvent);
}

void FakeDriver::endAll()
{
    for (QList<Operation> *operations : {&m_transfers, &m_waits}) {
        while (!operations->isEmpty()) {
            end(operations->takeFirst(), Cancelled);
        }
    }
}
