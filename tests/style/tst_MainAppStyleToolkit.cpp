#include "style/MainAppStyleTest.h"

#include <QApplication>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStylePlugin>
#include <QTest>

using namespace Qt::StringLiterals;

/// Brings the toolkit a style that its later releases lack.
class CleanlooksPlugin : public QStylePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QStyleFactoryInterface_iid FILE "cleanlooks.json")

public:
    QStyle *create(const QString &) override { return new QProxyStyle(u"fusion"_s); }
};

/// The look where the toolkit has the style that it is made for.
class tst_MainAppStyleToolkit : public MainAppStyleTest
{
    Q_OBJECT

private slots:
    void cleanlooksIsTaken();
};

void tst_MainAppStyleToolkit::cleanlooksIsTaken()
{
    QVERIFY(QStyleFactory::keys().contains(u"Cleanlooks"_s));
    const QString before = QApplication::style()->objectName();
    QVERIFY(before != "cleanlooks"_L1);
    makeStyle();
    m_style->applyStyle(m_window.get());
    // The sheet hides the name of the style below it.
    const QString sheet = qApp->styleSheet();
    qApp->setStyleSheet(QString());
    QCOMPARE(QApplication::style()->objectName(), u"cleanlooks"_s);
    qApp->setStyleSheet(sheet);

    delete m_style;
    QCOMPARE(QApplication::style()->objectName(), before);
}

Q_IMPORT_PLUGIN(CleanlooksPlugin)

QTEST_MAIN(tst_MainAppStyleToolkit)
#include "tst_MainAppStyleToolkit.moc"
