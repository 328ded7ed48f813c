// What goes back and forth between a panel and the module.

#include "ParameterPanelTest.h"

#include <algorithm>
#include <climits>

using namespace Qt::StringLiterals;

namespace {

bool writesAlone(const ParameterRow &row)
{
    return row.writes && row.enabled && !row.pushes;
}

QStringList expectedWrite(const ParameterRow &row, int value)
{
    QStringList lines{u"set 1 0 %1 %2"_s.arg(row.number).arg(value)};
    if (row.thenRequests) {
        lines.append(u"get 1 0 %1"_s.arg(*row.thenRequests));
    }
    return lines;
}

QString expectedRead(const ParameterRow &row)
{
    return u"get 1 0 %1"_s.arg(row.number);
}

} // namespace

void ParameterPanelTest::readOrder()
{
    const auto panel = make();
    FakeModule module;
    module.attach(panel.get());
    module.answering = false;
    QStringList expected;
    QStringList elsewhere;
    for (const ParameterRow &row : m_facts.rows) {
        expected.append(u"get 1 0 %1"_s.arg(row.number));
        elsewhere.append(u"get 200 3 %1"_s.arg(row.number));
    }
    panel->readValues();
    QCOMPARE(module.takeLog(), expected);

    panel->setAddress(static_cast<char>(200));
    panel->setMotor(3);
    panel->readValues();
    QCOMPARE(module.takeLog(), elsewhere);
}

void ParameterPanelTest::readWithoutAnswer()
{
    const auto panel = make();
    const QList<int> before = allShown(panel.get());
    panel->readValues(); // nobody listens
    QCOMPARE(allShown(panel.get()), before);

    FakeModule module;
    module.attach(panel.get());
    module.answering = false;
    panel->readValues();
    QCOMPARE(allShown(panel.get()), before);
}

void ParameterPanelTest::replies_data()
{
    QTest::addColumn<qsizetype>("index");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("expected");
    for (qsizetype index = 0; index < m_facts.rows.size(); ++index) {
        const ParameterRow &row = m_facts.rows.at(index);
        const auto add = [&](int value, int expected) {
            QTest::addRow("%s: %d", qPrintable(row.controls.first()), value)
                << index << value << expected;
        };
        add(row.probe, row.probe);
        if (QByteArray(row.type) == "QCheckBox") {
            for (const int value : {2, -1, 256, INT_MIN, INT_MAX}) {
                add(value, 1);
            }
        }
        if (row.hasRange() && !row.pushes) {
            add(row.largest, row.largest);
            add(INT_MIN, row.least);
            if (row.largest < INT_MAX) {
                add(row.largest + 1, row.largest);
            }
            add(row.least - 1, row.least);
        }
    }
}

void ParameterPanelTest::replies()
{
    QFETCH(qsizetype, index);
    QFETCH(int, value);
    QFETCH(int, expected);
    const ParameterRow &row = m_facts.rows.at(index);
    const auto panel = make();
    QList<int> all = allShown(panel.get());
    panel->requestedValue(1, 0, static_cast<char>(row.number), value);
    QCOMPARE(shown(panel.get(), row), expected);
    if (!row.pushes) {
        all[index] = expected;
        QCOMPARE(allShown(panel.get()), all);
    }
    if (QByteArray(row.type) == "QCheckBox") {
        panel->requestedValue(1, 0, static_cast<char>(row.number), 0);
        QCOMPARE(shown(panel.get(), row), 0);
    }
}

void ParameterPanelTest::commonNumber_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("not configured") << 0;
    QTest::newRow("the same twice") << 200;
}

void ParameterPanelTest::commonNumber()
{
    QFETCH(int, number);
    const auto panel = make(false);
    for (const ParameterRow &row : m_facts.rows) {
        if (number != 0) {
            row.setNumber(panel.get(), static_cast<char>(number));
        }
    }
    // Where one setter takes three numbers, the last row's call puts the others back.
    for (const int value : {11, 1}) {
        panel->requestedValue(1, 0, static_cast<char>(number), value);
        for (const ParameterRow &row : m_facts.rows) {
            const bool common =
                control(panel.get(), row.controls.first())->toolTip() == u"AP: %1"_s.arg(number);
            if (!common || row.pushes) {
                continue;
            }
            if (row.hasRange()) {
                QCOMPARE(shown(panel.get(), row), std::clamp(value, row.least, row.largest));
            } else if (value == 1) {
                QCOMPARE(shown(panel.get(), row), 1);
            }
        }
    }
}

void ParameterPanelTest::filters_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("motorBank");
    QTest::addColumn<bool>("taken");
    QTest::newRow("own") << 200 << 2 << true;
    QTest::newRow("other bank") << 200 << 0 << false;
    QTest::newRow("other address") << 1 << 2 << !m_facts.ownAddressOnly;
    QTest::newRow("both other") << 1 << 0 << false;
    QTest::newRow("exchanged") << 2 << 200 << false;
}

void ParameterPanelTest::filters()
{
    QFETCH(int, address);
    QFETCH(int, motorBank);
    QFETCH(bool, taken);
    for (const ParameterRow &row : m_facts.rows) {
        for (const bool raw : {false, true}) {
            const auto panel = make();
            panel->setAddress(static_cast<char>(200));
            panel->setMotor(2);
            const auto reply = [&](char type) {
                if (raw) {
                    panel->requestedCommand(static_cast<char>(address), 6, type,
                                            static_cast<char>(motorBank), 100, row.probe);
                } else {
                    panel->requestedValue(static_cast<char>(address), static_cast<char>(motorBank),
                                          type, row.probe);
                }
            };
            reply(static_cast<char>(99)); // nobody's number
            QCOMPARE(shown(panel.get(), row), row.start);
            reply(static_cast<char>(row.number));
            QCOMPARE(shown(panel.get(), row), taken ? row.probe : row.start);
        }
    }
}

void ParameterPanelTest::rawReplies_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("taken");
    QTest::newRow("write") << 5 << 100 << true;
    QTest::newRow("read") << 6 << 100 << true;
    QTest::newRow("move") << 4 << 100 << false;
    QTest::newRow("store") << 7 << 100 << false;
    QTest::newRow("none") << 0 << 100 << false;
    QTest::newRow("write refused") << 5 << 4 << false;
    QTest::newRow("read refused") << 6 << 4 << false;
    QTest::newRow("status 0") << 6 << 0 << false;
    QTest::newRow("status 101") << 6 << 101 << false;
    QTest::newRow("status 156, which is -100") << 6 << 156 << false;
}

void ParameterPanelTest::rawReplies()
{
    QFETCH(int, command);
    QFETCH(int, status);
    QFETCH(bool, taken);
    for (const ParameterRow &row : m_facts.rows) {
        const auto panel = make();
        panel->requestedCommand(1, static_cast<char>(command), static_cast<char>(row.number), 0,
                                static_cast<char>(status), row.probe);
        QCOMPARE(shown(panel.get(), row), taken ? row.probe : row.start);
    }
}

void ParameterPanelTest::writes_data()
{
    addRows(writesAlone);
}

void ParameterPanelTest::writes()
{
    QFETCH(qsizetype, index);
    const ShownPanel panel = show();
    QList<QList<int>> written; // as the bytes are, with their signs
    connect(panel.get(), &ParameterPanel::changeValue, this,
            [&](char address, char motorBank, char type, int value) {
                written.append({address, motorBank, type, value});
            });
    panel->setAddress(static_cast<char>(200));
    panel->setMotor(2);
    if (index < 0) {
        changeAllByUser(panel.get());
        QCOMPARE(written, QList<QList<int>>());
        return;
    }
    const ParameterRow &row = m_facts.rows.at(index);
    const int before = shown(panel.get(), row);
    const int after = changeByUser(panel.get(), row);
    QVERIFY(after != before);
    if (row.hasRange()) {
        QCOMPARE(after, before + row.step);
    }
    QCOMPARE(written, (QList<QList<int>>{{-56, 2, static_cast<char>(row.number), after}}));
}

void ParameterPanelTest::writeWithoutAnswer()
{
    QFETCH(qsizetype, index);
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    module.answering = false;
    if (index < 0) {
        const QList<int> changed = changeAllByUser(panel.get());
        QCOMPARE(module.takeLog(), QStringList());
        QCOMPARE(allShown(panel.get()), changed);
        return;
    }
    const ParameterRow &row = m_facts.rows.at(index);
    const int after = changeByUser(panel.get(), row);
    QCOMPARE(module.takeLog(), expectedWrite(row, after));
    QCOMPARE(shown(panel.get(), row), after); // the user's value stays
}

void ParameterPanelTest::firstRead_data()
{
    addRows([](const ParameterRow &row) { return !row.pushes; });
}

void ParameterPanelTest::firstRead()
{
    QFETCH(qsizetype, index);
    const ParameterRow &row = m_facts.rows.at(index);
    const auto panel = make();
    FakeModule module;
    module.attach(panel.get());
    for (const ParameterRow &other : m_facts.rows) {
        module.values[other.number] = other.start;
    }
    module.values[row.number] = row.probe;

    QStringList expected;
    for (const ParameterRow &other : m_facts.rows) {
        expected.append(expectedRead(other));
        if (&other == &row && row.writes) {
            expected.append(expectedWrite(row, row.probe)); // the one redundant write
        }
    }
    panel->readValues();
    QCOMPARE(module.takeLog(), expected);
    QCOMPARE(shown(panel.get(), row), row.probe);

    panel->readValues();
    QCOMPARE(module.takeLog().size(), m_facts.rows.size()); // no write any more
}

void ParameterPanelTest::limitedByModule_data()
{
    addRows([](const ParameterRow &row) { return writesAlone(row) && row.hasRange(); });
}

void ParameterPanelTest::limitedByModule()
{
    QFETCH(qsizetype, index);
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    if (index < 0) {
        const QList<int> changed = changeAllByUser(panel.get());
        QCOMPARE(allShown(panel.get()), changed); // the module isn't asked
        return;
    }
    const ParameterRow &row = m_facts.rows.at(index);
    const int start = shown(panel.get(), row);
    module.values[row.number] = start;
    module.largest[row.number] = start;
    changeByUser(panel.get(), row);
    // The user's value; within it the module's, which the control has jumped to.
    QStringList expected{u"set 1 0 %1 %2"_s.arg(row.number).arg(start + row.step)};
    expected.append(expectedWrite(row, start));
    if (row.thenRequests) {
        expected.append(u"get 1 0 %1"_s.arg(*row.thenRequests));
    }
    QCOMPARE(module.takeLog(), expected);
    QCOMPARE(shown(panel.get(), row), start);
}
