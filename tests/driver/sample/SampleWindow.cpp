#include "driver/sample/SampleWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDial>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QSlider>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

template <typename T>
T *named(const QString &name, T *widget)
{
    widget->setObjectName(name);
    return widget;
}

// A label that tells how the mouse was used on it.
class MouseLabel : public QLabel
{
public:
    using QLabel::QLabel;

protected:
    void mousePressEvent(QMouseEvent *) override { setText(u"pressed"_s); }
    void mouseReleaseEvent(QMouseEvent *) override
    {
        if (text() == u"pressed"_s) {
            setText(u"released"_s);
        }
    }
    void mouseDoubleClickEvent(QMouseEvent *) override { setText(u"twice"_s); }
};

} // namespace

SampleWindow::SampleWindow()
    : m_tabs(named(u"tabs"_s, new QTabWidget))
    , m_lblEvent(createLabel(u"lblEvent"_s))
{
    setObjectName(u"SampleWindow"_s);
    setWindowTitle(u"Sample"_s);
    createMenus();

    m_tabs->addTab(createButtonPage(), u"&Buttons"_s);
    m_tabs->addTab(createValuePage(), u"Values"_s);
    m_tabs->addTab(createListPage(), u"Lists"_s);
    m_tabs->addTab(createObstaclePage(), u"Obstacles"_s);
    for (int i = 1; i <= 12; ++i) {
        m_tabs->addTab(named(u"page%1"_s.arg(i), new QWidget), u"Far page %1"_s.arg(i));
    }
    m_tabs->addTab(new QWidget, u"Closed"_s);
    m_tabs->setTabEnabled(m_tabs->count() - 1, false);

    auto *central = new QWidget;
    auto *layout = new QVBoxLayout(central);
    layout->addWidget(m_tabs);
    layout->addWidget(m_lblEvent);
    // What a program that this one starts would find.
    auto *inherited = createLabel(u"lblInherited"_s);
    inherited->setText(qEnvironmentVariable("QT_QPA_GENERIC_PLUGINS", u"no plug-ins"_s));
    layout->addWidget(inherited);
    setCentralWidget(central);
    resize(640, 480);

    auto *shortcut = new QShortcut(QKeySequence(u"Ctrl+E"_s), this);
    connect(shortcut, &QShortcut::activated, this, [this] { m_lblEvent->setText(u"Ctrl+E"_s); });
}

QLabel *SampleWindow::createLabel(const QString &name)
{
    return named(name, new QLabel(u"nothing"_s));
}

void SampleWindow::createMenus()
{
    QMenu *file = menuBar()->addMenu(u"&File"_s);
    file->addAction(u"&Save as..."_s, this, &SampleWindow::saveFile);
    QMenu *more = file->addMenu(u"More"_s);
    more->addAction(u"Deep"_s, this, [this] { m_lblEvent->setText(u"deep"_s); });
    file->addAction(u"Never"_s)->setEnabled(false);
    file->addAction(u"Exit"_s, this, &QWidget::close);
    QMenu *help = menuBar()->addMenu(u"&Help"_s);
    help->addAction(u"&About"_s, this, &SampleWindow::showAbout);
}

QWidget *SampleWindow::createButtonPage()
{
    auto *page = named(u"buttonPage"_s, new QWidget);
    auto *layout = new QVBoxLayout(page);

    auto *name = new QPushButton(u"&Name..."_s);
    connect(name, &QPushButton::clicked, this, &SampleWindow::askForName);
    layout->addWidget(named(u"btnName"_s, name));

    auto *late = named(u"btnLate"_s, new QPushButton(u"Late"_s));
    late->setEnabled(false);
    connect(late, &QPushButton::clicked, this, [this] { m_lblEvent->setText(u"late"_s); });
    auto *start = named(u"btnStart"_s, new QPushButton(u"Start"_s));
    connect(start, &QPushButton::clicked, this,
            [late] { QTimer::singleShot(300, late, [late] { late->setEnabled(true); }); });
    layout->addWidget(start);
    layout->addWidget(late);

    // As wide as the page: only the box and the text can be clicked on.
    layout->addWidget(named(u"cbOption"_s, new QCheckBox(u"Option"_s)));
    layout->addWidget(named(u"rbFirst"_s, new QRadioButton(u"First"_s)));
    layout->addWidget(named(u"rbSecond"_s, new QRadioButton(u"Second"_s)));
    auto *stubborn = named(u"cbStubborn"_s, new QCheckBox(u"Stubborn"_s));
    connect(stubborn, &QCheckBox::clicked, stubborn, [stubborn] { stubborn->setChecked(false); });
    layout->addWidget(stubborn);
    layout->addWidget(named(u"lblMouse"_s, new MouseLabel(u"untouched"_s)));

    for (const QString &panel : {u"left"_s, u"right"_s}) {
        auto *box = named(panel, new QGroupBox(panel));
        auto *row = new QVBoxLayout(box);
        auto *send = named(u"btnSend"_s, new QPushButton(u"Send"_s));
        connect(send, &QPushButton::clicked, this, [this, panel] { m_lblEvent->setText(panel); });
        row->addWidget(send);
        layout->addWidget(box);
    }
    return page;
}

QWidget *SampleWindow::createValuePage()
{
    auto *page = named(u"valuePage"_s, new QWidget);
    auto *layout = new QVBoxLayout(page);
    auto *number = named(u"sbNumber"_s, new QSpinBox);
    number->setRange(-1000, 1000);
    number->setSuffix(u" mA"_s);
    layout->addWidget(number);
    auto *real = named(u"sbReal"_s, new QDoubleSpinBox);
    layout->addWidget(real);
    auto *text = named(u"leText"_s, new QLineEdit(u"old"_s));
    layout->addWidget(text);
    auto *fixed = named(u"leFixed"_s, new QLineEdit(u"fixed"_s));
    fixed->setReadOnly(true);
    layout->addWidget(fixed);

    auto *dial = named(u"dial"_s, new QDial);
    dial->setRange(-2000, 2000);
    dial->setFixedSize(120, 120);
    auto *moves = createLabel(u"lblMoves"_s);
    connect(dial, &QDial::sliderMoved, moves,
            [moves, count = 0]() mutable { moves->setNum(++count); });
    auto *held = createLabel(u"lblHeld"_s);
    connect(dial, &QDial::sliderPressed, held, [held] { held->setText(u"down"_s); });
    connect(dial, &QDial::sliderReleased, held, [held] { held->setText(u"up"_s); });
    layout->addWidget(dial);
    layout->addWidget(moves);
    layout->addWidget(held);
    auto *slider = named(u"slider"_s, new QSlider(Qt::Horizontal));
    slider->setRange(0, 100);
    slider->setFixedWidth(400);
    layout->addWidget(slider);
    layout->addWidget(named(u"scroll"_s, new QScrollBar(Qt::Horizontal)));
    return page;
}

QWidget *SampleWindow::createListPage()
{
    auto *page = named(u"listPage"_s, new QWidget);
    auto *layout = new QVBoxLayout(page);
    auto *combo = named(u"cmbSpeed"_s, new QComboBox);
    for (int i = 0; i < 60; ++i) {
        combo->addItem(u"%1 Bd"_s.arg(i * 100));
    }
    qobject_cast<QStandardItemModel *>(combo->model())->item(7)->setEnabled(false);
    // How often the choice has changed: once for each pick, whatever lies between.
    auto *changes = createLabel(u"lblChanges"_s);
    connect(combo, &QComboBox::currentIndexChanged, changes,
            [changes, count = 0]() mutable { changes->setNum(++count); });
    layout->addWidget(combo);
    layout->addWidget(changes);

    auto *twins = named(u"cmbTwins"_s, new QComboBox);
    twins->addItems({u"twin"_s, u"twin"_s});
    layout->addWidget(twins);
    auto *fickle = named(u"cmbFickle"_s, new QComboBox);
    fickle->addItems({u"yes"_s, u"no"_s});
    connect(fickle, &QComboBox::activated, fickle, [fickle] { fickle->setCurrentIndex(0); });
    layout->addWidget(fickle);
    auto *editable = named(u"cmbEditable"_s, new QComboBox);
    editable->setEditable(true);
    editable->addItems({u"alpha"_s, u"beta"_s, u"gamma"_s});
    layout->addWidget(editable);

    auto *list = named(u"list"_s, new QListWidget);
    for (int i = 0; i < 50; ++i) {
        list->addItem(u"row %1"_s.arg(i));
    }
    connect(list, &QListWidget::itemClicked, this,
            [this](const QListWidgetItem *item) { m_lblEvent->setText(item->text()); });
    layout->addWidget(list);
    return page;
}

QWidget *SampleWindow::createObstaclePage()
{
    auto *page = named(u"obstaclePage"_s, new QWidget);
    auto *layout = new QGridLayout(page);
    layout->addWidget(named(u"btnDisabled"_s, new QPushButton(u"Disabled"_s)));
    page->findChild<QPushButton *>(u"btnDisabled"_s)->setEnabled(false);
    auto *hidden = named(u"btnHidden"_s, new QPushButton(u"Hidden"_s));
    layout->addWidget(hidden);
    hidden->hide();
    auto *covered = named(u"btnCovered"_s, new QPushButton(u"Covered"_s));
    layout->addWidget(covered, 2, 0);
    layout->addWidget(named(u"lid"_s, new QGroupBox), 2, 0);

    auto *area = named(u"area"_s, new QScrollArea);
    auto *content = new QWidget;
    content->setMinimumSize(200, 3000);
    auto *far = named(u"btnFar"_s, new QPushButton(u"Far"_s, content));
    far->move(0, 2900);
    connect(far, &QPushButton::clicked, this, [this] { m_lblEvent->setText(u"far"_s); });
    area->setWidget(content);
    layout->addWidget(area, 3, 0);
    return page;
}

void SampleWindow::askForName()
{
    QDialog dialog(this);
    dialog.setObjectName(u"nameDialog"_s);
    dialog.setWindowTitle(u"Your name"_s);
    auto *layout = new QVBoxLayout(&dialog);
    auto *name = named(u"leName"_s, new QLineEdit);
    // Named as one of the main window's, which is behind the dialog.
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(u"btnName"_s);
    connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    layout->addWidget(name);
    layout->addWidget(buttons);
    m_lblEvent->setText(dialog.exec() == QDialog::Accepted ? name->text() : u"cancelled"_s);
}

void SampleWindow::saveFile()
{
    m_lblEvent->setText(QFileDialog::getSaveFileName(this, u"Save"_s));
}

void SampleWindow::showAbout()
{
    QMessageBox::about(nullptr, u"About this sample"_s, u"Sample\nVersion 1"_s);
    m_lblEvent->setText(u"about"_s);
}
