#include "support/TestCase.h"

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int endLimit = 120'000;
constexpr int failureCode = 3;

// A script that must fail, and the last line that it prints. "*" stands for any text.
struct Failure
{
    const char *name;
    const char *script;
    const char *line;
};

constexpr Failure failures[] = {
    // Finding a widget
    {"missing widget", "print one\nclick oddity",
     "FAIL 2 click oddity: no visible window has such a widget"},
    {"misspelt widget", "click btnStrat",
     "FAIL 1 click btnStrat: no visible window has such a widget; near it: btnStart*"},
    {"widget of another panel", "click left/btnStart",
     "FAIL 1 click left/btnStart: no visible window has such a widget; near it: "
     "SampleWindow/tabs/buttonPage/btnStart"},
    {"two widgets", "click btnSend",
     "FAIL 1 click btnSend: is ambiguous: SampleWindow/tabs/buttonPage/left/btnSend, "
     "SampleWindow/tabs/buttonPage/right/btnSend"},
    {"two of the toolkit's own widgets", "tab tabs Obstacles\nclick area/:QScrollBar",
     "FAIL 2 *: is ambiguous: */area/qt_scrollarea_hcontainer/:QScrollBar, "
     "*/area/qt_scrollarea_vcontainer/:QScrollBar"},
    {"two widgets waited for", "wait btnSend enabled == true", "FAIL 1 wait *: is ambiguous: *"},

    // What a user couldn't click on
    {"disabled", "tab tabs Obstacles\nclick btnDisabled", "FAIL 2 click btnDisabled: is disabled"},
    {"hidden", "tab tabs Obstacles\nclick btnHidden", "FAIL 2 click btnHidden: is hidden"},
    {"on another page", "set sbNumber 1",
     "FAIL 1 set sbNumber 1: is hidden, SampleWindow/tabs/valuePage isn't shown"},
    {"covered", "tab tabs Obstacles\nclick btnCovered",
     "FAIL 2 click btnCovered: is covered by SampleWindow/tabs/obstaclePage/lid"},
    {"scrolled out of view", "tab tabs Obstacles\nclick btnFar",
     "FAIL 2 click btnFar: is outside of what its window shows"},
    {"behind a dialog", "click btnName\nclick btnStart",
     "FAIL 2 click btnStart: is behind the dialog \"Your name\""},
    {"beside an open list", "tab tabs Lists\nclick cmbSpeed\nclick lblEvent",
     "FAIL 3 click lblEvent: is out of reach, * is open"},

    // Conditions
    {"too long a wait", "wait lblEvent text == never 0.2",
     "FAIL 1 wait lblEvent text == never 0.2: text is \"nothing\", after 0.2 s"},
    {"wait for a missing widget", "wait oddity text == never 0.2",
     "FAIL 1 wait oddity text == never 0.2: no visible window has such a widget, after 0.2 s"},
    {"wait for a missing property", "wait lblEvent value == 1 60",
     "FAIL 1 wait lblEvent value == 1 60: a QLabel has no property \"value\" that can be compared"},
    {"expectation", "expect lblEvent text contains some",
     "FAIL 1 expect lblEvent text contains some: text is \"nothing\""},
    {"expected number", "expect tabs count < 3", "FAIL 1 expect tabs count < 3: count is \"17\""},
    {"expectation of a missing property", "expect lblEvent items == 1",
     "FAIL 1 *: a QLabel has no property \"items\" that can be compared"},
    {"no file", "await /nowhere/file 0.1", "FAIL 1 await *: isn't there, after 0.1 s"},
    {"stays", "gone btnStart 0.1", "FAIL 1 gone btnStart 0.1: is still there, after 0.1 s"},

    // Buttons, dials, sliders
    {"not a button", "check lblEvent", "FAIL 1 check lblEvent: is a QLabel, not a button"},
    {"not checkable", "check btnStart", "FAIL 1 check btnStart: can't be checked"},
    {"stays unchecked", "check cbStubborn", "FAIL 1 check cbStubborn: stays off"},
    {"not a dial", "drag lblEvent 1..2", "FAIL 1 *: is a QLabel, not a dial or slider"},
    {"scroll bar", "tab tabs Values\ndrag scroll 1..2", "FAIL 2 *: is neither a dial nor a slider"},
    {"beyond the range", "tab tabs Values\ndrag dial 0..2001", "FAIL 2 *: goes from -2000 to 2000"},
    {"handle elsewhere", "tab tabs Values\ndrag slider 90..50", "FAIL 2 *: stands at *, not at 90"},

    // Lists and menus
    {"not a combo box", "select lblEvent a", "FAIL 1 *: is a QLabel, not a combo box"},
    {"missing item", "tab tabs Lists\nselect cmbEditable delta",
     "FAIL 2 select cmbEditable delta: has no \"delta\", only: alpha | beta | gamma"},
    {"two items", "tab tabs Lists\nselect cmbTwins twin",
     "FAIL 2 select cmbTwins twin: is ambiguous: it has \"twin\" more than once"},
    {"disabled item", "tab tabs Lists\nselect cmbSpeed \"700 Bd\"",
     "FAIL 2 *: has the item \"700 Bd\" disabled"},
    {"choice that is taken back", "tab tabs Lists\nselect cmbFickle no", "FAIL 2 *: shows \"yes\""},
    {"not a list", "item lblEvent a", "FAIL 1 *: is a QLabel, not a list, table or tree"},
    {"missing row", "tab tabs Lists\nitem list oddity",
     "FAIL 2 *: has no \"oddity\", only: row 0 | *"},
    {"row out of view", "tab tabs Lists\nitem list \"row 49\"",
     "FAIL 2 *: has that item out of view"},
    {"not a tab widget", "tab lblEvent a", "FAIL 1 *: is a QLabel, not a tab widget"},
    {"missing tab", "tab tabs Oddity", "FAIL 1 *: has no \"Oddity\", only: Buttons | Values | *"},
    {"disabled tab", "tab tabs Closed", "FAIL 1 tab tabs Closed: has the tab \"Closed\" disabled"},
    {"tabs behind a dialog", "click btnName\ntab tabs Values", "FAIL 2 *: is behind the dialog *"},
    {"missing menu", "menu Edit Undo", "FAIL 1 menu Edit Undo: has no \"Edit\", only: File | Help"},
    {"missing entry", "menu Help Undo", "FAIL 1 menu Help Undo: has no \"Undo\", only: About"},
    {"disabled entry", "menu File Never", "FAIL 1 menu File Never: has \"Never\" disabled"},
    {"no further menu", "menu Help About Deep", "FAIL 1 *: has no menu behind \"About\""},

    // Keyboard
    {"nothing to set", "set lblEvent a", "FAIL 1 *: is a QLabel, not a spin box or line edit"},
    {"read-only", "tab tabs Values\nset leFixed a", "FAIL 2 set leFixed a: is read-only"},
    {"value beyond the range", "tab tabs Values\nset sbNumber 1001", "FAIL 2 *: shows \"100\""},
    {"nowhere to type", "type lblEvent a",
     "FAIL 1 type lblEvent a: doesn't take the keyboard focus, after 2 s"},
    {"no tab stop", "key Space on lblEvent", "FAIL 1 *: can't be reached with the tabulator key"},

    // Windows
    {"unwritable picture", "screenshot /dev/null/a.png",
     "FAIL 1 screenshot /dev/null/a.png: /dev/null/a.png can't be written"},
    {"picture of a hidden widget", "screenshot sbNumber a.png", "FAIL 1 *: is hidden"},
    {"too small", "resize 1 1", "FAIL 1 resize 1 1: the window is * by *, after 2 s"},
    {"end before the last step", "close\nprint two", "FAIL 2 print two: the program ended before"},
    {"end by a step before the last", "menu File Exit\n\nprint two",
     "FAIL 3 print two: the program ended before"},

    // Writing
    {"unknown step", "# a script\n\nclik btnStart",
     "FAIL 3 clik btnStart: there is no step of this name; near it: click"},
    {"slip in the last line", "quit\nsleep",
     "FAIL 2 sleep: the number of arguments is wrong; usage: sleep MS"},
    {"too many arguments", "close now", "FAIL 1 *: the number of arguments is wrong; usage: close"},
    {"no menu entry", "menu File",
     "FAIL 1 *: the number of arguments is wrong; usage: menu MENU ENTRY..."},
    {"no number", "sleep long", "FAIL 1 *: \"long\" doesn't fit MS; usage: sleep MS"},
    {"negative time", "sleep -1", "FAIL 1 *: \"-1\" doesn't fit MS; *"},
    {"no size", "resize 0 1", "FAIL 1 *: \"0\" doesn't fit WIDTH; *"},
    {"no notches", "wheel a 0", "FAIL 1 *: \"0\" doesn't fit NOTCHES; *"},
    {"no seconds", "gone a soon", "FAIL 1 *: \"soon\" doesn't fit SECONDS; *"},
    {"no range", "drag a 1-2", "FAIL 1 *: \"1-2\" doesn't fit FROM..TO; *"},
    {"no keyword", "key Space in a", "FAIL 1 *: \"in\" doesn't fit on; *"},
    {"no key", "key Ctrl+Oddity", "FAIL 1 *: \"Ctrl+Oddity\" doesn't fit KEYS; *"},
    {"no operator", "expect a b = c", "FAIL 1 *: \"=\" doesn't fit OP; *"},
    {"no property", "expect a 1 == c", "FAIL 1 *: \"1\" doesn't fit PROPERTY; *"},
    {"empty name", "click a//b", "FAIL 1 *: \"a//b\" doesn't fit WIDGET; *"},
    {"open bracket", "click [a", "FAIL 1 *: \"[a\" doesn't fit WIDGET; *"},
    {"open quote", "print \"a", "FAIL 1 print \"a: the closing quote is missing"},
    {"quote within a word", "print \"a\"b", "FAIL 1 *: a blank must follow the closing quote"},
    {"missing variable", "print ${DRIVER_TEST_ODDITY}",
     "FAIL 1 *: the environment has no variable DRIVER_TEST_ODDITY"},
};

} // namespace

/// Starts a sample program under the driver and looks at what comes out.
class tst_Driver : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void scripts_data();
    void scripts();
    void pictures_data();
    void pictures();
    void failure_data();
    void failure();
    void unusableProgram_data();
    void unusableProgram();
    void missingScript();
    void awaitsAFile();
    void endOfScript();
    void help();

private:
    QString write(const QByteArray &script);
    void start(const QString &script, const QStringList &arguments = {});
    /// Waits for the end and returns the lines that were printed; none if the program crashed.
    QStringList finish();

    std::unique_ptr<QTemporaryDir> m_folder;
    QProcessEnvironment m_environment;
    QProcess m_program;
};

void tst_Driver::init()
{
    TestCase::init();
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_environment = QProcessEnvironment::systemEnvironment();
    m_environment.insert(u"QT_PLUGIN_PATH"_s, QStringLiteral(DRIVER_PLUGIN_PATH));
    m_environment.insert(u"DRIVER_TEST_FOLDER"_s, m_folder->path());
    m_environment.insert(u"DRIVER_TEST_WORD"_s, u"some word"_s);
}

QString tst_Driver::write(const QByteArray &script)
{
    QFile file(m_folder->filePath(u"script.steps"_s));
    if (!file.open(QIODevice::WriteOnly)) {
        return {};
    }
    file.write(script);
    return file.fileName();
}

void tst_Driver::start(const QString &script, const QStringList &arguments)
{
    m_environment.insert(u"QT_QPA_GENERIC_PLUGINS"_s, u"zdrdriver:"_s + script);
    m_program.setProcessEnvironment(m_environment);
    m_program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_program.start(QStringLiteral(DRIVER_SAMPLE), arguments);
}

QStringList tst_Driver::finish()
{
    if (!m_program.waitForFinished(endLimit)) {
        m_program.kill();
        m_program.waitForFinished();
        return {};
    }
    if (m_program.exitStatus() != QProcess::NormalExit) {
        return {};
    }
    return QString::fromUtf8(m_program.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

void tst_Driver::scripts_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"buttons", "values", "lists", "windows"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void tst_Driver::scripts()
{
    QFETCH(QString, name);
    const QString path = QStringLiteral(DRIVER_SCRIPTS) + u'/' + name + u".steps"_s;
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));

    // Each step is reported once, in order, by the number of its line.
    QStringList expected;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString verb = lines[i].section(u' ', 0, 0);
        if (!verb.isEmpty() && verb != u"#"_s) {
            expected.append(u"ok   %1 %2"_s.arg(i + 1).arg(verb));
        }
    }
    const qsizetype steps = expected.size();
    expected.append(u"done %1 steps"_s.arg(steps));

    start(path);
    const QStringList printed = finish();
    QStringList reported;
    for (const QString &line : printed) {
        reported.append(line.section(u' ', 0, line.startsWith(u"ok"_s) ? 4 : -1));
    }
    QVERIFY2(reported == expected, qPrintable(printed.join(u'\n')));
    QCOMPARE(m_program.exitCode(), 0);
}

void tst_Driver::pictures_data()
{
    QTest::addColumn<int>("scale");
    QTest::newRow("100 %") << 1;
    QTest::newRow("200 %") << 2;
}

void tst_Driver::pictures()
{
    QFETCH(int, scale);
    m_environment.insert(u"QT_SCALE_FACTOR"_s, QString::number(scale));
    start(write("resize 800 600\n"
                "screenshot \"${DRIVER_TEST_FOLDER}/window.png\"\n"
                "click btnName\n"
                "screenshot \"${DRIVER_TEST_FOLDER}/sub folder/dialog.png\"\n"
                "key Esc\n"
                "screenshot lblMouse \"${DRIVER_TEST_FOLDER}/label.png\"\n"
                "quit\n"));
    QCOMPARE(finish().value(6), u"ok   7 quit"_s);

    const QImage window(m_folder->filePath(u"window.png"_s));
    QCOMPARE(window.size(), QSize(800, 600) * scale);
    const QImage dialog(m_folder->filePath(u"sub folder/dialog.png"_s));
    QVERIFY(!dialog.isNull());
    QVERIFY(dialog.height() < window.height() / 2);
    const QImage label(m_folder->filePath(u"label.png"_s));
    QVERIFY(!label.isNull());
    QVERIFY(label.width() < window.width());
}

void tst_Driver::failure_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("line");
    for (const Failure &each : failures) {
        QTest::newRow(each.name) << QByteArray(each.script) << QString::fromUtf8(each.line);
    }
}

void tst_Driver::failure()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, line);
    start(write(script));
    const QStringList printed = finish();
    QVERIFY(!printed.isEmpty());
    const QString pattern = QRegularExpression::escape(line).replace(u"\\*"_s, u".*"_s);
    QVERIFY2(QRegularExpression(QRegularExpression::anchoredPattern(pattern))
                 .match(printed.last())
                 .hasMatch(),
             qPrintable(printed.last()));
    QCOMPARE(printed.filter(u"FAIL"_s).size(), 1);
    QCOMPARE(m_program.exitCode(), failureCode);
}

void tst_Driver::unusableProgram_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no widgets") << u"--no-widgets"_s << u": the program has no widgets"_s;
    QTest::newRow("no window") << u"--no-window"_s << u"FAIL 0 start: the program ended before"_s;
}

void tst_Driver::unusableProgram()
{
    QFETCH(QString, option);
    QFETCH(QString, reason);
    start(write("print one"), {option});
    const QStringList printed = finish();
    QCOMPARE(printed.size(), 1);
    QVERIFY2(printed.first().endsWith(reason), qPrintable(printed.first()));
    QCOMPARE(m_program.exitCode(), failureCode);
}

void tst_Driver::missingScript()
{
    start(u"/nowhere/script.steps"_s);
    QCOMPARE(finish(), QStringList{u"FAIL 0 /nowhere/script.steps: the script can't be read"_s});
    QCOMPARE(m_program.exitCode(), failureCode);
}

// What the script prints makes another program do something, which answers by a file.
void tst_Driver::awaitsAFile()
{
    start(write("print one\nawait \"${DRIVER_TEST_FOLDER}/answer\" 60\nquit\n"));
    QByteArray printed;
    QTRY_VERIFY_WITH_TIMEOUT((printed += m_program.readAllStandardOutput()).endsWith("one\n"),
                             endLimit);
    QFile answer(m_folder->filePath(u"answer"_s));
    QVERIFY(answer.open(QIODevice::WriteOnly));
    QCOMPARE(finish().value(0).section(u' ', 0, 4), u"ok   2 await"_s);
    QCOMPARE(m_program.exitCode(), 0);
}

// After the last step the program belongs to its user again.
void tst_Driver::endOfScript()
{
    start(write("print one"));
    QByteArray printed;
    QTRY_VERIFY_WITH_TIMEOUT((printed += m_program.readAllStandardOutput()).contains("done"),
                             endLimit);
    QCOMPARE(printed, "ok   1 print one\ndone 1 steps\n");
    QCOMPARE(m_program.state(), QProcess::Running);
    m_program.kill();
    QVERIFY(m_program.waitForFinished());
}

void tst_Driver::help()
{
    start(u"--help"_s);
    const QString text = finish().join(u'\n');
    QCOMPARE(m_program.exitCode(), 0);
    for (const QString &usage :
         {u"\n  click WIDGET\n"_s, u"\n  wait WIDGET PROPERTY OP VALUE [SECONDS]\n"_s,
          u"\n  drag WIDGET FROM..TO [MS] [hold]\n"_s, u"\n  quit\n"_s}) {
        QVERIFY2(text.contains(usage), qPrintable(usage));
    }
}

QTEST_GUILESS_MAIN(tst_Driver)
#include "tst_Driver.moc"
