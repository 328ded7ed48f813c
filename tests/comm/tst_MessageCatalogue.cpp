#include "comm/MessageCatalogue.h"
#include "support/TestCase.h"

#include <QCoreApplication>
#include <QTest>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace {

/// Shows which context and text were asked for.
class EchoTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *sourceText, const char *, int) const override
    {
        return QLatin1StringView(context) + u'/' + QLatin1StringView(sourceText);
    }
};

const QStringList Texts = {
    u"unable to open port"_s, u"Firmware update"_s, u"Restart by cycle"_s,
    u"Try restart"_s,         u"Device is busy"_s,  u"Device is not connected"_s,
    u"Device disconnected"_s,
};

} // namespace

/// The texts kept for a message display.
class tst_MessageCatalogue : public TestCase
{
    Q_OBJECT

private slots:
    void holdsSevenTexts();
    void textsAreTranslated();
};

void tst_MessageCatalogue::holdsSevenTexts()
{
    QCOMPARE(messageCatalogue(), Texts);
}

void tst_MessageCatalogue::textsAreTranslated()
{
    EchoTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QStringList expected = Texts;
    for (QString &text : expected) {
        text.prepend(u"msgText/"_s);
    }
    QCOMPARE(messageCatalogue(), expected);
}

QTEST_GUILESS_MAIN(tst_MessageCatalogue)
#include "tst_MessageCatalogue.moc"
