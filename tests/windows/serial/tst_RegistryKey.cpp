#include "RegistryKey.h"
#include "RegistryVariant.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// Reading the values of a real key, and hearing of their changes.
class tst_RegistryKey : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void missingKey();
    void takesOverNoKey();
    void walksValues();
    void walkEndsAtOversizedValue();
    void readsValueByName();
    void tellsOfOneChange();

private:
    void set(const wchar_t *name, DWORD type, const QByteArray &data, const wchar_t *subkey = L"");
};

namespace {

const auto KeyPath = u"Software\\zdrm7710 test of RegistryKey"_s;

QByteArray wide(const QString &text)
{
    return QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
}

const wchar_t *wideName(const QString &text)
{
    return reinterpret_cast<const wchar_t *>(text.utf16());
}

} // namespace

void tst_RegistryKey::init()
{
    TestCase::init();
    cleanup();
    HKEY key = nullptr;
    QCOMPARE(RegCreateKeyExW(HKEY_LOCAL_MACHINE, wideName(KeyPath), 0, nullptr, 0, KEY_ALL_ACCESS,
                             nullptr, &key, nullptr),
             LSTATUS(ERROR_SUCCESS));
    RegCloseKey(key);
}

void tst_RegistryKey::cleanup()
{
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, wideName(KeyPath));
}

void tst_RegistryKey::set(const wchar_t *name, DWORD type, const QByteArray &data,
                          const wchar_t *subkey)
{
    const QString path = KeyPath + QString::fromWCharArray(subkey);
    QCOMPARE(RegSetKeyValueW(HKEY_LOCAL_MACHINE, wideName(path), name, type, data.constData(),
                             static_cast<DWORD>(data.size())),
             LSTATUS(ERROR_SUCCESS));
}

void tst_RegistryKey::missingKey()
{
    const RegistryKey key(u"Software\\no such key"_s, KEY_READ);
    QVERIFY(!key.isOpen());
    QVERIFY(!key.handle());
    QVERIFY(!key.valueAt(0));
    QVERIFY(!key.value(u"PortName"_s));
}

void tst_RegistryKey::takesOverNoKey()
{
    QVERIFY(!RegistryKey(nullptr).isOpen());
    QVERIFY(!RegistryKey(static_cast<HKEY>(INVALID_HANDLE_VALUE)).isOpen());
}

void tst_RegistryKey::walksValues()
{
    set(L"first", REG_SZ, wide(u"one\0"_s));
    set(L"second", REG_DWORD, "\x02\x00\x00\x00"_ba);
    const RegistryKey key(KeyPath, KEY_READ);
    QVERIFY(key.isOpen());
    QMap<QString, QVariant> values;
    for (DWORD index = 0; index < 2; ++index) {
        const auto value = key.valueAt(index);
        QVERIFY(value);
        values.insert(value->name, registryVariant(value->type, value->data));
    }
    QCOMPARE(values.value(u"first"_s), QVariant(u"one"_s));
    QCOMPARE(values.value(u"second"_s), QVariant(2U));
    QVERIFY(!key.valueAt(2));
}

void tst_RegistryKey::walkEndsAtOversizedValue()
{
    set(L"large", REG_BINARY, QByteArray(16384, 'x'));
    const RegistryKey key(KeyPath, KEY_READ);
    QCOMPARE(key.valueAt(0)->data.size(), 16384);
    set(L"large", REG_BINARY, QByteArray(16385, 'x'));
    QVERIFY(!key.valueAt(0));
}

void tst_RegistryKey::readsValueByName()
{
    set(L"ImagePath", REG_EXPAND_SZ, wide(u"a path\0"_s));
    const RegistryKey key(KeyPath, KEY_QUERY_VALUE);
    const auto value = key.value(u"ImagePath"_s);
    QVERIFY(value);
    QCOMPARE(value->name, u"ImagePath"_s);
    QCOMPARE(value->type, DWORD(REG_EXPAND_SZ));
    QCOMPARE(registryVariant(value->type, value->data), QVariant(u"a path"_s));
    QVERIFY(!key.value(u"missing"_s));
}

void tst_RegistryKey::tellsOfOneChange()
{
    constexpr DWORD Generous = 10000; // ms
    const RegistryKey key(KeyPath, KEY_NOTIFY);
    const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    key.notifyOfChange(event);
    QCOMPARE(WaitForSingleObject(event, 0), DWORD(WAIT_TIMEOUT));
    set(L"value", REG_DWORD, "\x01\x00\x00\x00"_ba, L"\\below");
    QCOMPARE(WaitForSingleObject(event, Generous), DWORD(WAIT_OBJECT_0));
    // It is to be armed again for the next.
    set(L"value", REG_DWORD, "\x02\x00\x00\x00"_ba, L"\\below");
    QCOMPARE(WaitForSingleObject(event, 0), DWORD(WAIT_TIMEOUT));
    key.notifyOfChange(event);
    set(L"value", REG_DWORD, "\x03\x00\x00\x00"_ba, L"\\below");
    QCOMPARE(WaitForSingleObject(event, Generous), DWORD(WAIT_OBJECT_0));
    CloseHandle(event);
}

QTEST_GUILESS_MAIN(tst_RegistryKey)
#include "tst_RegistryKey.moc"
