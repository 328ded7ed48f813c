#include "app/SettingsFileContent.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <limits>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int Most = std::numeric_limits<int>::max();
constexpr int Least = std::numeric_limits<int>::min();

QByteArray inSection(const QByteArray &line)
{
    return "[motion_settings]\n" + line + '\n';
}

} // namespace

class tst_SettingsFileContent : public TestCase
{
    Q_OBJECT

private slots:
    void number_data();
    void number();
    void agreesWithTheToolkit_data() { number_data(); }
    void agreesWithTheToolkit();
    void caseIsNotLookedAt_data();
    void caseIsNotLookedAt();
    void neighboursSurvive_data();
    void neighboursSurvive();
    void filesThatSayNothing_data();
    void filesThatSayNothing();
    void hugeFileIsReadToTheLimit();
    void deepNonsenseTakesNoTime();
    void storedSeedsAgreeWithTheToolkit();

private:
    QTemporaryDir m_folder;
};

/// "motion_settings/Acceleration" in a file.
void tst_SettingsFileContent::number_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("number");

    QTest::newRow("as exported") << inSection("Acceleration=51200") << 51200;
    QTest::newRow("no line end at the end") << QByteArray("[motion_settings]\nAcceleration=7") << 7;
    QTest::newRow("line feeds and returns")
        << QByteArray("[motion_settings]\r\nAcceleration=7\r\nx=1\r\n") << 7;
    QTest::newRow("returns alone") << QByteArray("[motion_settings]\rAcceleration=7\rx=1\r") << 7;
    QTest::newRow("byte order mark")
        << QByteArray("\xEF\xBB\xBF[motion_settings]\nAcceleration=7\n") << 7;
    QTest::newRow("empty lines") << QByteArray("\n\n[motion_settings]\n\n\nAcceleration=7\n") << 7;

    QTest::newRow("blanks around key and value") << inSection(" \t Acceleration \t=  7 \t ") << 7;
    QTest::newRow("blanks in the section")
        << QByteArray("[ motion_settings ]\nAcceleration=7\n") << 7;
    QTest::newRow("text behind the section")
        << QByteArray("[motion_settings] x=1\nAcceleration=7\n") << 7;
    QTest::newRow("section without its end")
        << QByteArray("[motion_settings\nAcceleration=7\n") << 7;
    QTest::newRow("blanks inside") << inSection("Acceleration=1 2") << 0;
    QTest::newRow("quoted") << inSection("Acceleration=\"7\"") << 7;
    QTest::newRow("quoted with blanks") << inSection("Acceleration=\" 7 \"") << 7;
    QTest::newRow("quoted in parts") << inSection("Acceleration=\"1\"2\"3\"") << 123;
    QTest::newRow("quoted sign of a comment") << inSection("Acceleration=\"7;\"") << 0;
    QTest::newRow("comment behind it") << inSection("Acceleration=7 ; steps") << 7;
    QTest::newRow("comment line before it") << inSection("; Acceleration=1\nAcceleration=7") << 7;
    QTest::newRow("in a comment line only") << inSection("; Acceleration=7") << 0;

    QTest::newRow("negative") << inSection("Acceleration=-5") << -5;
    QTest::newRow("with a plus") << inSection("Acceleration=+5") << 5;
    QTest::newRow("leading zeros") << inSection("Acceleration=007") << 7;
    QTest::newRow("most") << inSection("Acceleration=2147483647") << Most;
    QTest::newRow("least") << inSection("Acceleration=-2147483648") << Least;
    QTest::newRow("above 32 bits") << inSection("Acceleration=2147483648") << 0;
    QTest::newRow("below 32 bits") << inSection("Acceleration=-2147483649") << 0;
    QTest::newRow("the lower 32 bits of it would do") << inSection("Acceleration=4294967301") << 0;
    QTest::newRow("very long") << inSection("Acceleration=" + QByteArray(5000, '1')) << 0;
    QTest::newRow("fraction") << inSection("Acceleration=1.5") << 0;
    QTest::newRow("hexadecimal") << inSection("Acceleration=0x10") << 0;
    QTest::newRow("exponent") << inSection("Acceleration=1e3") << 0;
    QTest::newRow("thousands") << inSection("Acceleration=1,000") << 0;
    QTest::newRow("list") << inSection("Acceleration=1, 2") << 0;
    QTest::newRow("word") << inSection("Acceleration=fast") << 0;
    QTest::newRow("truth") << inSection("Acceleration=true") << 0;
    QTest::newRow("empty") << inSection("Acceleration=") << 0;
    QTest::newRow("equals signs") << inSection("Acceleration==7") << 0;
    QTest::newRow("no equals sign") << inSection("Acceleration") << 0;
    QTest::newRow("digits of another script")
        << inSection("Acceleration=\xD9\xA7") << 0; // an Arabic-Indic seven

    QTest::newRow("empty file") << QByteArray() << 0;
    QTest::newRow("byte order mark alone") << QByteArray("\xEF\xBB\xBF") << 0;
    QTest::newRow("missing key") << inSection("x=7") << 0;
    QTest::newRow("missing section") << QByteArray("Acceleration=7\n") << 0;
    QTest::newRow("key of another section")
        << QByteArray("[encoder_settings]\nAcceleration=7\n") << 0;
    QTest::newRow("longer key") << inSection("Accelerations=7") << 0;
    QTest::newRow("twice: the later one") << inSection("Acceleration=6\nAcceleration=7") << 7;
    QTest::newRow("section in two parts")
        << QByteArray("[motion_settings]\nAcceleration=7\n[x]\ny=1\n[motion_settings]\nz=2\n") << 7;
    QTest::newRow("section in two parts, twice: the later one")
        << QByteArray("[motion_settings]\nAcceleration=6\n[x]\n[motion_settings]\nAcceleration=7\n")
        << 7;
    QTest::newRow("path in place of a section")
        << QByteArray("motion_settings/Acceleration=7\n") << 0;
    QTest::newRow("path with a backslash") << QByteArray("motion_settings\\Acceleration=7\n") << 0;
    QTest::newRow("path in the general section")
        << QByteArray("[General]\nmotion_settings/Acceleration=7\n") << 0;
    QTest::newRow("escaped characters in the names")
        << QByteArray("[motion%5Fsettings]\n%41cceleration=7\n") << 7;
}

void tst_SettingsFileContent::number()
{
    QFETCH(QByteArray, text);
    QTEST(SettingsFileContent(text).number(u"motion_settings", u"Acceleration"), "number");
}

/// For the spelling that the export uses, QSettings reads the same numbers everywhere.
void tst_SettingsFileContent::agreesWithTheToolkit()
{
    QFETCH(QByteArray, text);
    // A name of its own for each row: QSettings takes files of equal size and time for unchanged.
    static int count = 0;
    const QString name = m_folder.filePath(u"%1.ini"_s.arg(++count));
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    const QSettings settings(name, QSettings::IniFormat);
    QTEST(settings.value(u"motion_settings/Acceleration"_s, 0).toString().toInt(), "number");
    QTEST(SettingsFileContent::ofFile(name).number(u"motion_settings", u"Acceleration"), "number");
}

void tst_SettingsFileContent::caseIsNotLookedAt_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("number");
    QTest::newRow("lower") << QByteArray("[motor_and_module_settings]\nmaxcurrent=100\n") << 100;
    QTest::newRow("upper") << QByteArray("[MOTOR_AND_MODULE_SETTINGS]\nMAXCURRENT=100\n") << 100;
    QTest::newRow("both, later upper")
        << QByteArray("[motor_and_module_settings]\nmaxcurrent=1\nMAXCURRENT=100\n") << 100;
    QTest::newRow("both, later lower")
        << QByteArray("[motor_and_module_settings]\nMAXCURRENT=1\nmaxcurrent=100\n") << 100;
    QTest::newRow("sections of both spellings")
        << QByteArray("[motor_and_module_settings]\nMAXCURRENT=1\n"
                      "[Motor_And_Module_Settings]\nmaxcurrent=100\n")
        << 100;
}

void tst_SettingsFileContent::caseIsNotLookedAt()
{
    QFETCH(QByteArray, text);
    const SettingsFileContent content(text);
    QTEST(content.number(u"motor_and_module_settings", u"MaxCurrent"), "number");
    QTEST(content.number(u"motor_and_module_settings", u"MAXCurrent"), "number");
    QTEST(content.number(u"MOTOR_and_module_settings", u"maxcurrent"), "number");
}

void tst_SettingsFileContent::neighboursSurvive_data()
{
    QTest::addColumn<QByteArray>("neighbour");
    QTest::addColumn<int>("number");
    QTest::newRow("line without an equals sign") << QByteArray("nonsense") << 7;
    QTest::newRow("line end in quotes") << QByteArray("x=\"a\nAcceleration=1\"") << 7;
    QTest::newRow("escaped quotes") << QByteArray("x=\"a\\\"b\"") << 7;
    QTest::newRow("line that goes on") << QByteArray("x=a\\\nAcceleration=1") << 7;
    QTest::newRow("line that goes on, returns") << QByteArray("x=a\\\r\nAcceleration=1") << 7;
    QTest::newRow("quotes that don't end swallow the rest") << QByteArray("x=\"a") << 0;
    QTest::newRow("value of the toolkit's own types")
        << QByteArray("x=@Variant(\\0\\0\\0\\x2)") << 7;
    QTest::newRow("zero bytes") << QByteArray("x=\0\0\0=\0", 7) << 7;
    QTest::newRow("no UTF-8") << QByteArray("\xFF\xFE=\xC3") << 7;
}

void tst_SettingsFileContent::neighboursSurvive()
{
    QFETCH(QByteArray, neighbour);
    const SettingsFileContent content(inSection(neighbour + "\nAcceleration=7"));
    QTEST(content.number(u"motion_settings", u"Acceleration"), "number");
}

void tst_SettingsFileContent::filesThatSayNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no name") << QString();
    QTest::newRow("missing") << m_folder.filePath(u"missing.ini"_s);
    QTest::newRow("folder") << m_folder.path();
    QTest::newRow("device without an end") << u"/dev/zero"_s;
    const QString pipe = m_folder.filePath(u"pipe"_s);
    mkfifo(pipe.toLocal8Bit().constData(), 0600);
    QTest::newRow("pipe that nobody writes to") << pipe;
    QTest::newRow("file that can't be read") << u"/proc/self/mem"_s; // not even for root
}

void tst_SettingsFileContent::filesThatSayNothing()
{
    QFETCH(QString, name);
    QCOMPARE(SettingsFileContent::ofFile(name).number(u"motion_settings", u"Acceleration"), 0);
}

void tst_SettingsFileContent::hugeFileIsReadToTheLimit()
{
    QFile file(m_folder.filePath(u"huge.ini"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(inSection("Acceleration=7"));
    QVERIFY(file.seek(SettingsFileContent::LargestSize));
    file.write("\n[motion_settings]\nAcceleration=8\nMaxPositioningSpeed=9\n");
    QVERIFY(file.resize(qint64(1) << 40)); // it takes no room on the disk
    file.close();
    const auto content = SettingsFileContent::ofFile(file.fileName());
    QCOMPARE(content.number(u"motion_settings", u"Acceleration"), 7);
    QCOMPARE(content.number(u"motion_settings", u"MaxPositioningSpeed"), 0);
}

/// A large file, in forms that would cost a careless reader the square of its size.
void tst_SettingsFileContent::deepNonsenseTakesNoTime()
{
    constexpr int Size = SettingsFileContent::LargestSize / 4;
    for (const char *piece :
         {"[", "=", "\"", "\\", ";", "\n", "[x]\n", "a=1\n", "%41", ";\n", " "}) {
        const QByteArray text = QByteArray(piece).repeated(Size / int(qstrlen(piece)));
        QCOMPARE(SettingsFileContent(text).number(u"motion_settings", u"Acceleration"), 0);
    }
}

/// The files that the fuzzing of the reader starts from.
void tst_SettingsFileContent::storedSeedsAgreeWithTheToolkit()
{
    const QDir seeds(QFINDTESTDATA("../../fuzz/corpus/settings"));
    const QStringList names = seeds.entryList(QDir::Files);
    QVERIFY(!names.isEmpty());
    int found = 0;
    for (const QString &name : names) {
        const QSettings settings(seeds.filePath(name), QSettings::IniFormat);
        const auto content = SettingsFileContent::ofFile(seeds.filePath(name));
        const QStringList keys = settings.allKeys();
        for (const QString &key : keys) {
            // On this system QSettings takes the spellings of a key for different keys.
            if (!key.contains(u'/') || keys.filter(key, Qt::CaseInsensitive).size() > 1) {
                continue;
            }
            QCOMPARE(content.number(key.section(u'/', 0, 0), key.section(u'/', 1)),
                     settings.value(key).toString().toInt());
            ++found;
        }
    }
    QCOMPARE_GT(found, 31);
}

QTEST_GUILESS_MAIN(tst_SettingsFileContent)
#include "tst_SettingsFileContent.moc"
