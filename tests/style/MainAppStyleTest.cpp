#include "style/MainAppStyleTest.h"

#include "style/AppSettings.h"

#include <QAction>
#include <QApplication>
#include <QButtonGroup>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

void MainAppStyleTest::initTestCase()
{
    QVERIFY(m_folder.isValid());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.path());
}

void MainAppStyleTest::init()
{
    TestCase::init();
    AppSettings().clear();
    m_window = std::make_unique<QMainWindow>();
    m_bar = m_window->addToolBar(u"Tools"_s);
    QPixmap picture(200, 200);
    picture.fill(Qt::black);
    m_iconAction = m_bar->addAction(picture, u"icon"_s);
    m_textAction = m_bar->addAction(u"text"_s);
}

void MainAppStyleTest::cleanup()
{
    m_window.reset();
    m_style = nullptr;
    QCOMPARE(qApp->styleSheet(), QString());
}

void MainAppStyleTest::makeStyle()
{
    m_style = new MainAppStyle(m_window.get());
}

QToolButton *MainAppStyleTest::sizeButton(int id) const
{
    auto *group = m_style->findChild<QButtonGroup *>();
    return group ? qobject_cast<QToolButton *>(group->button(id)) : nullptr;
}

void MainAppStyleTest::click(int id)
{
    QTest::mouseClick(sizeButton(id), Qt::LeftButton);
}

QStringList MainAppStyleTest::sizeRules()
{
    return {u"QWidget {font-size: 20px}"_s, u"QWidget {font-size: 16px}"_s,
            u"QWidget {font-size: 12px}"_s, u"QWidget {font-size: 8px}"_s};
}
