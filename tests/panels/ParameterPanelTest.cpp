#include "ParameterPanelTest.h"

#include "support/MetaMethods.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>

using namespace Qt::StringLiterals;
using namespace PanelTest;

namespace {

/// The sheet that the window lays over all panels.
const QString windowSheet =
    u"QGroupBox{border: 1px solid gray; border-radius: 3px; margin-top: 0.5em;}"
    "QGroupBox::title{subcontrol-origin: margin; left: 10px; padding: 0 3px 0 3px;}"_s;

/// The methods that all parameter panels have, and then the panel's own.
QStringList allMethods(const ParameterPanel &panel, QMetaMethod::MethodType kind)
{
    return ownMethods(ParameterPanel::staticMetaObject, kind)
        + ownMethods(*panel.metaObject(), kind);
}

} // namespace

QWidget *control(const ParameterPanel *panel, const QString &name)
{
    auto *widget = panel->findChild<QWidget *>(name);
    if (!widget) {
        qFatal("no control %s", qPrintable(name));
    }
    return widget;
}

int shown(const ParameterPanel *panel, const ParameterRow &row)
{
    QWidget *widget = control(panel, row.controls.first());
    if (const auto *spinBox = qobject_cast<QSpinBox *>(widget)) {
        return spinBox->value();
    }
    if (const auto *slider = qobject_cast<QSlider *>(widget)) {
        return slider->value();
    }
    if (const auto *checkBox = qobject_cast<QCheckBox *>(widget)) {
        return checkBox->isChecked() ? 1 : 0;
    }
    if (const auto *comboBox = qobject_cast<QComboBox *>(widget)) {
        return comboBox->currentIndex() < 0 ? -1
                                            : comboBox->currentText().section(u' ', 0, 0).toInt();
    }
    for (qsizetype i = 0; i < row.controls.size(); ++i) {
        if (qobject_cast<QRadioButton *>(control(panel, row.controls.at(i)))->isChecked()) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

int changeByUser(ParameterPanel *panel, const ParameterRow &row)
{
    QWidget *widget = control(panel, row.controls.first());
    widget->setFocus();
    if (const auto *spinBox = qobject_cast<QSpinBox *>(widget)) {
        QTest::keyClick(widget, spinBox->value() == spinBox->maximum() ? Qt::Key_Down : Qt::Key_Up);
    } else if (qobject_cast<QSlider *>(widget)) {
        QTest::keyClick(widget, Qt::Key_Right);
    } else if (qobject_cast<QComboBox *>(widget)) {
        QTest::keyClick(widget, Qt::Key_Down);
    } else {
        QTest::keyClick(widget, Qt::Key_Space);
    }
    return shown(panel, row);
}

ParameterPanelTest::ParameterPanelTest(const PanelFacts &facts)
    : m_facts(facts)
{
}

std::unique_ptr<ParameterPanel> ParameterPanelTest::make(bool configured) const
{
    std::unique_ptr<ParameterPanel> panel(m_facts.create(nullptr));
    if (configured) {
        setNumbers(panel.get());
    }
    return panel;
}

ParameterPanelTest::ShownPanel ParameterPanelTest::show() const
{
    return ShownPanel([this](QWidget *window) {
        ParameterPanel *panel = m_facts.create(window);
        setNumbers(panel);
        return panel;
    });
}

void ParameterPanelTest::setNumbers(ParameterPanel *panel) const
{
    for (const ParameterRow &row : m_facts.rows) {
        row.setNumber(panel, static_cast<char>(row.number));
    }
}

QList<int> ParameterPanelTest::allShown(const ParameterPanel *panel) const
{
    QList<int> values;
    for (const ParameterRow &row : m_facts.rows) {
        values.append(shown(panel, row));
    }
    return values;
}

void ParameterPanelTest::addRows(const std::function<bool(const ParameterRow &)> &filter) const
{
    QTest::addColumn<qsizetype>("index");
    bool any = false;
    for (qsizetype index = 0; index < m_facts.rows.size(); ++index) {
        const ParameterRow &row = m_facts.rows.at(index);
        if (filter(row)) {
            QTest::newRow(qPrintable(row.controls.first())) << index;
            any = true;
        }
    }
    if (!any) {
        QTest::newRow("no control") << qsizetype(-1);
    }
}

QList<int> ParameterPanelTest::changeAllByUser(ParameterPanel *panel) const
{
    QList<int> values;
    for (const ParameterRow &row : m_facts.rows) {
        values.append(changeByUser(panel, row));
    }
    return values;
}

void ParameterPanelTest::methods()
{
    const auto panel = make();
    QCOMPARE(allMethods(*panel, QMetaMethod::Signal),
             (QStringList{u"requestValue(char address, char motorBank, char type)"_s,
                          u"changeValue(char address, char motorBank, char type, int value)"_s}
              + m_facts.ownSignals));
    QCOMPARE(allMethods(*panel, QMetaMethod::Slot),
             (QStringList{u"requestedValue(char address, char motorBank, char type, int value)"_s,
                          u"requestedCommand(char address, char command, char type, "
                          "char motorBank, char status, int data)"_s}
              + m_facts.ownSlots));
}

void ParameterPanelTest::properties_data()
{
    addPropertyColumns();
    const QByteArray panelType = make()->metaObject()->className();
    addPropertyRow("panel", panelType, "size", m_facts.size);
    addPropertyRow("panel", panelType, "maximumSize", m_facts.maximumSize);
    addPropertyRow(m_facts.groupBox.toLatin1(), "QGroupBox", "title", m_facts.title);
    for (const ParameterRow &row : m_facts.rows) {
        for (const QString &name : row.controls) {
            const QByteArray object = name.toLatin1();
            addPropertyRow(object, row.type, "enabled", row.enabled);
            if (row.hasRange()) {
                addPropertyRow(object, row.type, "minimum", row.least);
                addPropertyRow(object, row.type, "maximum", row.largest);
                addPropertyRow(object, row.type, "singleStep", row.step);
                addPropertyRow(object, row.type, "value", row.start);
            }
        }
    }
    for (const PropertyRow &row : m_facts.properties) {
        addPropertyRow(row.object, row.type, row.property, row.value);
    }
}

void ParameterPanelTest::properties()
{
    compareProperty(*std::unique_ptr<ParameterPanel>(m_facts.create(nullptr)));
}

void ParameterPanelTest::title()
{
    const auto panel = make();
    panel->setTitle(u"Another title"_s);
    QCOMPARE(panel->findChildren<QGroupBox *>().size(), 1);
    QCOMPARE(panel->findChild<QGroupBox *>(m_facts.groupBox)->title(), u"Another title"_s);
}

void ParameterPanelTest::labels_data()
{
    addRows([](const ParameterRow &row) { return !row.label.isEmpty(); });
}

void ParameterPanelTest::labels()
{
    QFETCH(qsizetype, index);
    const ParameterRow &row = m_facts.rows.at(index);
    const auto panel = make();
    QWidget *widget = control(panel.get(), row.controls.first());
    if (const auto *button = qobject_cast<QAbstractButton *>(widget)) {
        QCOMPARE(button->text(), row.label);
        return;
    }
    QList<QLabel *> labels = panel->findChildren<QLabel *>();
    labels.removeIf([widget](const QLabel *label) { return label->buddy() != widget; });
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.first()->text(), row.label);
    if (!row.labelObject.isEmpty()) {
        QCOMPARE(labels.first()->objectName(), row.labelObject);
    }
}

void ParameterPanelTest::accessibleNames()
{
    const auto panel = make();
    for (const ParameterRow &row : m_facts.rows) {
        if (row.label.isEmpty()) {
            continue; // radio buttons, whose texts are in the rows of properties
        }
        QWidget *widget = control(panel.get(), row.controls.first());
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(widget);
        QVERIFY(accessible);
        if (!row.accessibleName.isEmpty()) {
            QCOMPARE(accessible->text(QAccessible::Name), row.accessibleName);
        } else if (qobject_cast<QAbstractButton *>(widget)) {
            QCOMPARE(accessible->text(QAccessible::Name), row.label);
        } else {
            QStringList names; // the group box is one of them
            for (const auto &label : accessible->relations(QAccessible::Label)) {
                names.append(label.first->text(QAccessible::Name));
            }
            QVERIFY2(names.contains(row.label), qPrintable(names.join(u',')));
        }
    }
}

void ParameterPanelTest::toolTipsAtFirst()
{
    const auto panel = make(false);
    for (const ParameterRow &row : m_facts.rows) {
        for (const QString &name : row.controls) {
            QCOMPARE(control(panel.get(), name)->toolTip(), u"AP: 0"_s);
        }
    }
}

void ParameterPanelTest::toolTips_data()
{
    addRows([](const ParameterRow &) { return true; });
}

void ParameterPanelTest::toolTips()
{
    QFETCH(qsizetype, index);
    const auto panel = make();
    m_facts.rows.at(index).setNumber(panel.get(), static_cast<char>(255));
    for (qsizetype i = 0; i < m_facts.rows.size(); ++i) {
        const ParameterRow &row = m_facts.rows.at(i);
        for (const QString &name : row.controls) {
            QCOMPARE(control(panel.get(), name)->toolTip(),
                     u"AP: %1"_s.arg(i == index ? 255 : row.number));
        }
    }
}

void ParameterPanelTest::tabOrder()
{
    const ShownPanel panel = show();
    QCOMPARE(panel.tabOrder(m_facts.tabOrder.first().toLatin1()), m_facts.tabOrder);
}

void ParameterPanelTest::layoutFits_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::newRow("plain") << QString();
    QTest::newRow("in the window's sheet") << windowSheet;
}

void ParameterPanelTest::layoutFits()
{
    QFETCH(QString, sheet);
    const ShownPanel panel = show();
    panel->window()->setStyleSheet(sheet);
    for (auto *spinBox : panel->findChildren<QSpinBox *>()) {
        const bool least =
            QString::number(spinBox->minimum()).size() > QString::number(spinBox->maximum()).size();
        spinBox->setValue(least ? spinBox->minimum() : spinBox->maximum());
    }
    QTRY_COMPARE(panel.clipped(), QStringList());
    QCOMPARE(panel->size(), m_facts.size);
    for (const QLabel *label : panel->findChildren<QLabel *>()) {
        if (label->isVisible() && label->hasHeightForWidth()) {
            QVERIFY2(label->height() >= label->heightForWidth(label->width()),
                     qPrintable(label->text()));
        }
    }
}
