#include "style/IconTinting.h"
#include "support/DebugLog.h"
#include "support/TestCase.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPainter>
#include <QPalette>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <memory>

using namespace Qt::StringLiterals;

/// A widget with one of everything that has a picture, and the text colour of a dark or light
/// palette.
class tst_IconTinting : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void greyIconTakesTheTextColour_data();
    void greyIconTakesTheTextColour();
    void colouredIconTakesTheTextColour();
    void iconKeepsItsShape();
    void shownIconHasTheColour();
    void iconIsAskedForAtItsLargest();
    void everyKindOfButton();
    void deepChildrenButNotTheWidgetItself();
    void actions();
    void labelsWithAPicture();
    void treeItems();
    void nothingWithoutAnIconGetsOne();
    void eachPassTellsItsCount();
    void emptyWidget();

private:
    void setTextColor(const QColor &color);
    std::unique_ptr<QWidget> m_widget;
};

namespace {

const QColor TextColor(210, 220, 230);

QPixmap halfPicture(const QColor &color, int side = 200)
{
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter(&picture).fillRect(0, 0, side / 2, side, color);
    return picture;
}

QColor leftOf(const QPixmap &picture)
{
    return picture.toImage().pixelColor(picture.width() / 4, picture.height() / 2);
}

QColor rightOf(const QPixmap &picture)
{
    return picture.toImage().pixelColor(picture.width() * 3 / 4, picture.height() / 2);
}

QColor leftOf(const QIcon &icon)
{
    return leftOf(icon.pixmap(32, 32));
}

} // namespace

void tst_IconTinting::init()
{
    TestCase::init();
    setTextColor(TextColor);
    m_widget = std::make_unique<QWidget>();
}

void tst_IconTinting::cleanup()
{
    m_widget.reset();
    QApplication::setPalette(QPalette());
}

void tst_IconTinting::setTextColor(const QColor &color)
{
    QPalette palette;
    palette.setColor(QPalette::Text, color);
    // The other roles with the word in them don't count.
    palette.setColor(QPalette::WindowText, Qt::magenta);
    palette.setColor(QPalette::ButtonText, Qt::magenta);
    QApplication::setPalette(palette);
}

void tst_IconTinting::greyIconTakesTheTextColour_data()
{
    QTest::addColumn<QColor>("text");
    QTest::newRow("dark palette") << QColor(255, 255, 255);
    QTest::newRow("light palette") << QColor(0, 0, 0);
    QTest::newRow("any") << QColor(10, 200, 90);
}

void tst_IconTinting::greyIconTakesTheTextColour()
{
    QFETCH(QColor, text);
    setTextColor(text);
    auto *button = new QPushButton(m_widget.get());
    button->setIcon(halfPicture(QColor(128, 128, 128)));
    setIconsToTextColor(m_widget.get());
    QCOMPARE(leftOf(button->icon()), text);
}

void tst_IconTinting::colouredIconTakesTheTextColour()
{
    auto *button = new QPushButton(m_widget.get());
    button->setIcon(halfPicture(Qt::red));
    setIconsToTextColor(m_widget.get());
    QCOMPARE(leftOf(button->icon()), TextColor);
}

void tst_IconTinting::iconKeepsItsShape()
{
    auto *button = new QPushButton(m_widget.get());
    QPixmap picture = halfPicture(Qt::black);
    QPainter(&picture).fillRect(100, 0, 50, 200, QColor(0, 0, 0, 128));
    button->setIcon(picture);
    setIconsToTextColor(m_widget.get());

    const QImage before = picture.toImage().convertToFormat(QImage::Format_Alpha8);
    const QImage after =
        button->icon().pixmap(200, 200).toImage().convertToFormat(QImage::Format_Alpha8);
    QCOMPARE(after, before);
    QCOMPARE(rightOf(button->icon().pixmap(200, 200)).alpha(), 0);
}

void tst_IconTinting::shownIconHasTheColour()
{
    auto *button = new QToolButton(m_widget.get());
    button->setAutoRaise(true);
    button->setIconSize(QSize(32, 32));
    button->setFixedSize(48, 48);
    QPixmap picture(200, 200);
    picture.fill(Qt::black);
    button->setIcon(picture);
    setIconsToTextColor(m_widget.get());
    QCOMPARE(button->grab().toImage().pixelColor(24, 24), TextColor);
}

// Larger sources are scaled down to 200 pixels, smaller ones stay as they are.
void tst_IconTinting::iconIsAskedForAtItsLargest()
{
    auto *large = new QPushButton(m_widget.get());
    large->setIcon(halfPicture(Qt::black, 512));
    auto *small = new QPushButton(m_widget.get());
    small->setIcon(halfPicture(Qt::black, 16));
    setIconsToTextColor(m_widget.get());
    QCOMPARE(large->icon().availableSizes(), QList<QSize>({QSize(200, 200)}));
    QCOMPARE(small->icon().availableSizes(), QList<QSize>({QSize(16, 16)}));
}

void tst_IconTinting::everyKindOfButton()
{
    const QList<QAbstractButton *> buttons = {new QPushButton(m_widget.get()),
                                              new QToolButton(m_widget.get()),
                                              new QCheckBox(m_widget.get())};
    for (QAbstractButton *button : buttons) {
        button->setIcon(halfPicture(Qt::black));
    }
    setIconsToTextColor(m_widget.get());
    for (const QAbstractButton *button : buttons) {
        QCOMPARE(leftOf(button->icon()), TextColor);
    }
}

void tst_IconTinting::deepChildrenButNotTheWidgetItself()
{
    QPushButton root;
    root.setIcon(halfPicture(Qt::black));
    auto *deep = new QPushButton(new QWidget(new QWidget(&root)));
    deep->setIcon(halfPicture(Qt::black));
    setIconsToTextColor(&root);
    QCOMPARE(leftOf(deep->icon()), TextColor);
    QCOMPARE(leftOf(root.icon()), QColor(Qt::black));
}

void tst_IconTinting::actions()
{
    auto *action = new QAction(halfPicture(Qt::black), u"Redo"_s, m_widget.get());
    setIconsToTextColor(m_widget.get());
    QCOMPARE(leftOf(action->icon()), TextColor);
    QCOMPARE(action->text(), u"Redo"_s);
}

void tst_IconTinting::labelsWithAPicture()
{
    auto *picture = new QLabel(m_widget.get());
    picture->setPixmap(halfPicture(Qt::black, 30));
    auto *text = new QLabel(u"text"_s, m_widget.get());
    setIconsToTextColor(m_widget.get());
    QCOMPARE(picture->pixmap().size(), QSize(30, 30));
    QCOMPARE(leftOf(picture->pixmap()), TextColor);
    QCOMPARE(rightOf(picture->pixmap()).alpha(), 0);
    QCOMPARE(text->text(), u"text"_s);
}

void tst_IconTinting::treeItems()
{
    auto *tree = new QTreeWidget(m_widget.get());
    tree->setColumnCount(2);
    auto *top = new QTreeWidgetItem(tree, {u"top"_s, QString()});
    auto *below = new QTreeWidgetItem(top, {u"below"_s, QString()});
    top->setIcon(0, halfPicture(Qt::black));
    below->setIcon(1, halfPicture(Qt::black));
    setIconsToTextColor(m_widget.get());
    QCOMPARE(leftOf(top->icon(0)), TextColor);
    QCOMPARE(leftOf(below->icon(1)), TextColor);
    QVERIFY(top->icon(1).isNull());
}

void tst_IconTinting::nothingWithoutAnIconGetsOne()
{
    auto *button = new QPushButton(u"text"_s, m_widget.get());
    auto *action = new QAction(u"text"_s, m_widget.get());
    auto *label = new QLabel(m_widget.get());
    setIconsToTextColor(m_widget.get());
    QVERIFY(button->icon().isNull());
    QVERIFY(action->icon().isNull());
    QVERIFY(label->pixmap().isNull());
}

void tst_IconTinting::eachPassTellsItsCount()
{
    for (int i = 0; i < 3; ++i) {
        new QPushButton(m_widget.get());
    }
    new QAction(m_widget.get());
    new QAction(m_widget.get());
    auto *label = new QLabel(m_widget.get());
    label->setPixmap(halfPicture(Qt::black));
    new QLabel(u"a text is no picture"_s, m_widget.get());

    DebugLog log;
    setIconsToTextColor(m_widget.get());
    QCOMPARE(log.lines(),
             QStringList({u"setIconsToTextColor 3"_s, u"setIconsToTextColorA 2"_s,
                          u"setIconsToTextColorL 1"_s}));
}

void tst_IconTinting::emptyWidget()
{
    DebugLog log;
    setIconsToTextColor(m_widget.get());
    QCOMPARE(log.lines(),
             QStringList({u"setIconsToTextColor 0"_s, u"setIconsToTextColorA 0"_s,
                          u"setIconsToTextColorL 0"_s}));
}

QTEST_MAIN(tst_IconTinting)
#include "tst_IconTinting.moc"
