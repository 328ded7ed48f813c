#include "support/TestCase.h"

#include <QFile>
#include <QTest>
#include <QXmlStreamReader>
#include <qt_windows.h>

#include <algorithm>
#include <cstring>
#include <string>

using namespace Qt::StringLiterals;

/// What Windows reads of the program's file before it runs: kind, icon, version and manifest.
class tst_ProgramFile : public TestCase
{
    Q_OBJECT

private slots:
    void opensNoConsole();
    void hasIconOfAllSizes();
    void tellsItsVersion();
    void tellsItsName_data();
    void tellsItsName();
    void manifest();

private:
    const QString m_path = QStringLiteral(ZDR_PROGRAM);
};

namespace {

/// Resource @p name of the kind @p type in the file @p path; empty if there is none.
QByteArray resourceOf(const QString &path, const wchar_t *type, const wchar_t *name)
{
    QByteArray bytes;
    const HMODULE module =
        LoadLibraryExW(path.toStdWString().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    if (const HRSRC resource = FindResourceW(module, name, type)) {
        const void *data = LockResource(LoadResource(module, resource));
        bytes = QByteArray(static_cast<const char *>(data),
                           static_cast<qsizetype>(SizeofResource(module, resource)));
    }
    FreeLibrary(module);
    return bytes;
}

/// The version record of the file @p path, as the functions that read it want it.
QByteArray versionOf(const QString &path)
{
    const std::wstring name = path.toStdWString();
    const DWORD size = GetFileVersionInfoSizeW(name.c_str(), nullptr);
    QByteArray version(static_cast<qsizetype>(size), '\0');
    return GetFileVersionInfoW(name.c_str(), 0, size, version.data()) ? version : QByteArray();
}

} // namespace

void tst_ProgramFile::opensNoConsole()
{
    QFile file(m_path);
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(m_path));
    const QByteArray bytes = file.read(4096);
    IMAGE_DOS_HEADER dos;
    std::memcpy(&dos, bytes.constData(), sizeof dos);
    IMAGE_NT_HEADERS headers;
    QVERIFY(dos.e_lfanew + qsizetype(sizeof headers) <= bytes.size());
    std::memcpy(&headers, bytes.constData() + dos.e_lfanew, sizeof headers);
    QCOMPARE(headers.OptionalHeader.Subsystem, WORD(IMAGE_SUBSYSTEM_WINDOWS_GUI));
}

void tst_ProgramFile::hasIconOfAllSizes()
{
    // The directory of an icon: three words, the last one the count of pictures, and for each of
    // those a record of 14 bytes that begins with its width, 256 as 0.
    constexpr qsizetype Header = 6;
    constexpr qsizetype Record = 14;
    const QByteArray icon = resourceOf(m_path, RT_GROUP_ICON, MAKEINTRESOURCEW(1));
    QVERIFY(icon.size() > Header);
    QList<int> widths;
    for (qsizetype at = Header; at + Record <= icon.size(); at += Record) {
        widths << static_cast<unsigned char>(icon.at(at));
    }
    std::sort(widths.begin(), widths.end());
    QCOMPARE(widths, (QList<int>{0, 16, 24, 32, 48, 64}));
}

void tst_ProgramFile::tellsItsVersion()
{
    const QByteArray version = versionOf(m_path);
    VS_FIXEDFILEINFO *info = nullptr;
    UINT size = 0;
    QVERIFY(VerQueryValueW(version.constData(), L"\\", reinterpret_cast<void **>(&info), &size));
    const auto text =
        u"%1.%2"_s.arg(HIWORD(info->dwFileVersionMS)).arg(LOWORD(info->dwFileVersionMS));
    QCOMPARE(text, QStringLiteral(ZDR_PROGRAM_VERSION));
    QCOMPARE(info->dwProductVersionMS, info->dwFileVersionMS);
}

void tst_ProgramFile::tellsItsName_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("CompanyName") << u"ZDRM Tool developers"_s;
    QTest::newRow("FileDescription") << u"ZDRM-7710/7711 set-up tool"_s;
    QTest::newRow("ProductName") << u"ZDRM-7710/7711 set-up tool"_s;
    QTest::newRow("OriginalFilename") << u"zdrm7710.exe"_s;
    QTest::newRow("FileVersion") << QStringLiteral(ZDR_PROGRAM_VERSION);
}

void tst_ProgramFile::tellsItsName()
{
    const QByteArray version = versionOf(m_path);
    const auto key = u"\\StringFileInfo\\040904b0\\"_s + QLatin1StringView(QTest::currentDataTag());
    wchar_t *text = nullptr;
    UINT size = 0;
    QVERIFY(VerQueryValueW(version.constData(), key.toStdWString().c_str(),
                           reinterpret_cast<void **>(&text), &size));
    QTEST(QString::fromWCharArray(text), "value");
}

void tst_ProgramFile::manifest()
{
    // Attributes and texts by the names of their elements, whatever these lie in.
    QMultiMap<QString, QString> said;
    QXmlStreamReader xml(resourceOf(m_path, MAKEINTRESOURCEW(24), MAKEINTRESOURCEW(1)));
    QString element;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            element = xml.name().toString();
            for (const QXmlStreamAttribute &attribute : xml.attributes()) {
                said.insert(element + u'.' + attribute.name().toString(),
                            attribute.value().toString());
            }
        } else if (xml.isCharacters() && !xml.isWhitespace()) {
            said.insert(element, xml.text().toString());
        }
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    const qsizetype identity = said.values(u"assemblyIdentity.name"_s).indexOf(u"zdrm7710"_s);
    QVERIFY(identity >= 0);
    QCOMPARE(said.values(u"assemblyIdentity.version"_s).value(identity),
             QStringLiteral(ZDR_PROGRAM_VERSION) + u".0.0"_s);
    QCOMPARE(said.value(u"requestedExecutionLevel.level"_s), u"asInvoker"_s);
    QCOMPARE(said.value(u"dpiAwareness"_s), u"PerMonitorV2"_s);
    QVERIFY(said.contains(u"assemblyIdentity.name"_s, u"Microsoft.Windows.Common-Controls"_s));
    // Windows 10 and 11, which imitate an older system for a program that doesn't name them.
    QVERIFY(said.contains(u"supportedOS.Id"_s, u"{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"_s));
}

QTEST_GUILESS_MAIN(tst_ProgramFile)
#include "tst_ProgramFile.moc"
