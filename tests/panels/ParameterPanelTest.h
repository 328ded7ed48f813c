#pragma once

#include "FakeModule.h"
#include "PanelTest.h"
#include "panels/ParameterPanel.h"
#include "support/TestCase.h"

#include <functional>
#include <memory>
#include <optional>

/// One parameter of a panel as its test expects it.
struct ParameterRow
{
    int number = 0; ///< that the module has for it
    std::function<void(ParameterPanel *panel, char number)> setNumber = {};
    QStringList controls = {}; ///< object names; all carry the tool tip
    const char *type = "QSpinBox"; ///< class of the controls
    QString label = {}; ///< text of the label whose buddy it is, or its own text
    QString labelObject = {}; ///< name of that label, where it is laid down
    QString accessibleName = {}; ///< if it isn't the label's text
    int least = 0; ///< of spin boxes and sliders
    int largest = 0;
    int step = 1;
    int start = 0; ///< what shown() gives at first
    int probe = 1; ///< a value that the control can show, not the start value
    bool enabled = true;
    bool writes = true; ///< on each change
    std::optional<int> thenRequests = {}; ///< number of the parameter asked for after a write
    bool pushes = false; ///< its change moves another control

    /// True for spin boxes and sliders.
    bool hasRange() const { return least != largest; }
};

/// The number setter @p set of a panel as ParameterRow has it.
template <typename Panel>
std::function<void(ParameterPanel *, char)> setter(void (Panel::*set)(char))
{
    return
        [set](ParameterPanel *panel, char number) { (static_cast<Panel *>(panel)->*set)(number); };
}

/// One property of one object of a panel.
struct PropertyRow
{
    const char *object;
    const char *type;
    const char *property;
    QVariant value;
};

/// What the test of a panel expects of it.
struct PanelFacts
{
    /// Makes the panel, with the items of its combo boxes.
    std::function<ParameterPanel *(QWidget *parent)> create = {};
    QString groupBox = {}; ///< object name
    QString title = {}; ///< at first
    QSize size = {};
    QSize maximumSize = {QWIDGETSIZE_MAX, QWIDGETSIZE_MAX};
    bool ownAddressOnly = false; ///< replies of other addresses are left alone
    QStringList ownSignals = {};
    QStringList ownSlots = {};
    QStringList tabOrder = {};
    QList<PropertyRow> properties = {}; ///< beside those of the rows
    QList<ParameterRow> rows = {}; ///< in the order of reading
};

/// Tests what all parameter panels do alike. The test of a panel derives from it, gives it the
/// facts and adds what is special about the panel.
class ParameterPanelTest : public TestCase
{
    Q_OBJECT

public:
    explicit ParameterPanelTest(const PanelFacts &facts);

protected:
    using ShownPanel = PanelTest::Shown<ParameterPanel>;

    /// A panel without a window, its numbers set if @p configured.
    std::unique_ptr<ParameterPanel> make(bool configured = true) const;
    /// A panel in a window, its numbers set.
    ShownPanel show() const;
    void setNumbers(ParameterPanel *panel) const;
    /// shown() of each row.
    QList<int> allShown(const ParameterPanel *panel) const;
    /// Adds a row of test data with its index for each parameter of which @p filter is true; if
    /// there is none, one with the index -1.
    void addRows(const std::function<bool(const ParameterRow &)> &filter) const;
    /// changeByUser() for each row in turn.
    QList<int> changeAllByUser(ParameterPanel *panel) const;

    const PanelFacts m_facts;

private slots:
    void methods();
    void properties_data();
    void properties();
    void title();
    void labels_data();
    void labels();
    void accessibleNames();
    void toolTipsAtFirst();
    void toolTips_data();
    void toolTips();
    void tabOrder();
    void layoutFits_data();
    void layoutFits();
    void readOrder();
    void readWithoutAnswer();
    void replies_data();
    void replies();
    void commonNumber_data();
    void commonNumber();
    void filters_data();
    void filters();
    void rawReplies_data();
    void rawReplies();
    void writes_data();
    void writes();
    void writeWithoutAnswer_data() { writes_data(); }
    void writeWithoutAnswer();
    void firstRead_data();
    void firstRead();
    void limitedByModule_data();
    void limitedByModule();
};

/// The control @p name of @p panel; its absence ends the test program.
QWidget *control(const ParameterPanel *panel, const QString &name);

/// What the row's controls show: the value of a spin box or slider; 1 or 0 for a check box; the
/// number at the beginning of a combo box's text, or -1; the index of the checked radio button,
/// or -1.
int shown(const ParameterPanel *panel, const ParameterRow &row);

/// Changes the row's control as a user does, by one step up or, where that isn't possible, down.
/// Returns what it shows then.
int changeByUser(ParameterPanel *panel, const ParameterRow &row);
