#include "serial/native/windows/RegistryVariant.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// What the values of the registry say, by type.
class tst_RegistryVariant : public TestCase
{
    Q_OBJECT

private slots:
    void variantByType_data();
    void variantByType();
};

namespace {

QByteArray wide(const QString &text)
{
    return QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
}

} // namespace

void tst_RegistryVariant::variantByType_data()
{
    QTest::addColumn<quint32>("type");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QVariant>("variant");

    const QString twoParts(u"ab\0cd\0"_s);
    QTest::newRow("string") << RegistryType::Text << wide(twoParts) << QVariant(u"ab"_s);
    QTest::newRow("string without end") << RegistryType::Text << wide(u"ab"_s) << QVariant(u"ab"_s);
    QTest::newRow("string of half a character")
        << RegistryType::Text << wide(u"ab"_s) + 'c' << QVariant(u"ab"_s);
    QTest::newRow("empty string") << RegistryType::Text << QByteArray() << QVariant(QString());
    QTest::newRow("string with variables, which stay")
        << RegistryType::TextWithVariables << wide(u"%SystemRoot%\\x\0"_s)
        << QVariant(u"%SystemRoot%\\x"_s);
    QTest::newRow("none") << RegistryType::None << wide(twoParts) << QVariant(twoParts);
    QTest::newRow("binary") << RegistryType::Binary << wide(twoParts) << QVariant(twoParts);
    QTest::newRow("number") << RegistryType::Number << "\x01\x02\x03\xff"_ba
                            << QVariant(0xff030201U);
    QTest::newRow("number, other order")
        << RegistryType::BigEndianNumber << "\x01\x02\x03\xff"_ba << QVariant(0x010203ffU);
    QTest::newRow("number cut short") << RegistryType::Number << "\x01\x02\x03"_ba << QVariant();
    QTest::newRow("list") << RegistryType::TextList << wide(u"ab\0cd\0\0"_s)
                          << QVariant(QStringList{u"ab"_s, u"cd"_s});
    QTest::newRow("list, ended by the first empty one")
        << RegistryType::TextList << wide(u"ab\0\0cd\0\0"_s) << QVariant(QStringList{u"ab"_s});
    QTest::newRow("list without end")
        << RegistryType::TextList << wide(u"ab\0cd"_s) << QVariant(QStringList{u"ab"_s, u"cd"_s});
    QTest::newRow("empty list") << RegistryType::TextList << QByteArray()
                                << QVariant(QStringList());
    QTest::newRow("link") << quint32(6) << wide(twoParts) << QVariant();
    QTest::newRow("long number") << quint32(11) << "12345678"_ba << QVariant();
    QTest::newRow("unknown") << quint32(4711) << wide(twoParts) << QVariant();
}

void tst_RegistryVariant::variantByType()
{
    QFETCH(quint32, type);
    QFETCH(QByteArray, data);
    QTEST(registryVariant(type, data), "variant");
}

QTEST_GUILESS_MAIN(tst_RegistryVariant)
#include "tst_RegistryVariant.moc"
