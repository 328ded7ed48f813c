#include "support/TestCase.h"

#include <QRegularExpression>
#include <QTest>

void TestCase::init()
{
    // What the platform without a screen says of itself is no finding.
    QTest::failOnWarning(QRegularExpression(QStringLiteral("^(?!This plugin does not support )")));
}
