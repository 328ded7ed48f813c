#include "driver/Language.h"

#include "driver/Steps.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace driver {

namespace {

constexpr Verb table[] = {
    {"click WIDGET"_L1, "clicks on it"_L1, steps::click},
    {"doubleclick WIDGET"_L1, "clicks on it twice in quick succession"_L1, steps::doubleClick},
    {"press WIDGET"_L1, "holds the mouse button down on it"_L1, steps::press},
    {"release WIDGET"_L1, "lets the mouse button go over it"_L1, steps::release},
    {"wheel WIDGET NOTCHES"_L1, "turns the wheel over it; up is positive"_L1, steps::wheel},
    {"check WIDGET"_L1, "clicks on a check box, radio or toggle button unless it is on"_L1,
     steps::check},
    {"uncheck WIDGET"_L1, "clicks on it unless it is off"_L1, steps::uncheck},
    {"select WIDGET TEXT"_L1, "opens a combo box and picks the item"_L1, steps::select},
    {"item WIDGET TEXT"_L1, "clicks on the item of a list, table or tree"_L1, steps::item},
    {"tab WIDGET TEXT"_L1, "clicks on the tab of a tab widget"_L1, steps::tab},
    {"set WIDGET VALUE"_L1,
     "replaces what a spin box or line edit holds, ends with the tabulator key, and fails if it "
     "then shows something else"_L1,
     steps::set},
    {"drag WIDGET FROM..TO [MS] [hold]"_L1,
     "drags a dial or slider from one value to another within MS (500), and holds the button down "
     "until \"release\" if told to"_L1,
     steps::drag},
    {"type WIDGET TEXT"_L1, "clicks on it unless it has the focus, and types"_L1, steps::type},
    {"key KEYS [on WIDGET]"_L1,
     "presses keys such as Ctrl+Q or Return in the window in front, or on a widget that is given "
     "the focus as by the tabulator key"_L1,
     steps::key},
    {"menu MENU ENTRY..."_L1, "walks the menu bar with clicks"_L1, steps::menu},
    {"wait WIDGET PROPERTY OP VALUE [SECONDS]"_L1,
     "waits until the widget is there and the comparison holds, for 10 s if not told otherwise; "
     "OP is one of == != < <= > >= contains matches"_L1,
     steps::wait},
    {"expect WIDGET PROPERTY OP VALUE"_L1, "fails unless the comparison holds now"_L1,
     steps::expect},
    {"gone WIDGET [SECONDS]"_L1, "waits until no visible window has the widget"_L1, steps::gone},
    {"await FILE [SECONDS]"_L1,
     "waits until another program has made the file, for 10 s if not told otherwise"_L1,
     steps::await},
    {"sleep MS"_L1, "does nothing for a while; the program goes on"_L1, steps::sleep},
    {"screenshot [WIDGET] FILE"_L1,
     "saves a picture of the widget, or of the dialog that is open, or of the main window"_L1,
     steps::screenshot},
    {"resize WIDTH HEIGHT"_L1, "gives the window in front another size"_L1, steps::resize},
    {"print TEXT"_L1, "does nothing but show up in the report"_L1, steps::print},
    {"close"_L1, "closes the window in front by its close box"_L1, steps::close},
    {"quit"_L1, "ends the program at once with exit code 0"_L1, steps::quit},
};

constexpr auto introduction =
    R"(Drives an unchanged Qt Widgets program by a script, as a user would, with mouse and keys.

    QT_PLUGIN_PATH=<folder of the plug-ins> QT_QPA_GENERIC_PLUGINS=zdrdriver:<script> <program>

The path of the script must not hold a comma. The script starts when the main window is shown. It
has one step per line; blank lines, and what follows a word that begins with #, are left out.
Arguments with blanks stand in double quotes, in which \" is a quote and \\ a backslash; ${NAME}
is replaced by the environment variable.

Steps:
)"_L1;

constexpr auto conclusion = R"(
WIDGET is a path of names with slashes between, such as wDirectMode/btnSend: the last one is the
widget's own, the others are ancestors' and may be left out as long as only one widget fits. A name
is an object name, a shown text in brackets ([OK]), or a class after a colon (:QMessageBox).
Properties are those of the toolkit (text, value, currentText, enabled, visible, checked, title,
windowTitle, ...) and items (texts of a combo box or of tabs, with | between) and currentTabText.

A step that a user couldn't do fails: the widget is hidden, disabled, covered, or behind a dialog.
Each step prints one line, "ok", the number of its line in the script and the step, or "FAIL" with
the reason after a colon; a failure ends the program with exit code 3, also if it ends by itself
before the last step. After the last step "done" is printed and the program keeps running.
)"_L1;

} // namespace

std::span<const Verb> verbs()
{
    return table;
}

QStringList verbNames()
{
    QStringList names;
    for (const Verb &verb : table) {
        names.append(QString(verb.usage).section(u' ', 0, 0));
    }
    return names;
}

const Verb *verbNamed(const QString &name)
{
    const qsizetype index = verbNames().indexOf(name);
    return index < 0 ? nullptr : &table[index];
}

QString helpText()
{
    QString text = introduction;
    for (const Verb &verb : table) {
        text += u"  %1\n      %2\n"_s.arg(verb.usage, verb.explanation);
    }
    return text + conclusion;
}

} // namespace driver
