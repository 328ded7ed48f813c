#include "panels/ParameterToolTip.h"
#include "support/TestCase.h"

#include <QTest>

class tst_ParameterToolTip : public TestCase
{
    Q_OBJECT

private slots:
    void text_data();
    void text();
};

void tst_ParameterToolTip::text_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("expected");
    for (const int number : {0, 5, 127, 128, 131, 140, 198, 255}) {
        QTest::addRow("%d", number) << number << QStringLiteral("AP: %1").arg(number);
    }
}

void tst_ParameterToolTip::text()
{
    QFETCH(int, number);
    QTEST(parameterToolTip(static_cast<char>(number)), "expected");
}

QTEST_GUILESS_MAIN(tst_ParameterToolTip)
#include "tst_ParameterToolTip.moc"
