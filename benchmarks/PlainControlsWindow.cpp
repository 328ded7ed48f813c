// As many plain controls as the tool has, in as many boxes and tabs: what the toolkit itself takes
// to make and show them, with nothing behind.

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDial>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTextEdit>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t Tabs = 6;
constexpr std::size_t BoxesOfTab = 4;
constexpr int Columns = 3;

using Grids = std::array<QGridLayout *, Tabs * BoxesOfTab>;

Grids makeBoxes(QTabWidget *tabs)
{
    Grids grids;
    for (std::size_t i = 0; i < grids.size(); ++i) {
        if (i % BoxesOfTab == 0) {
            auto *tab = new QWidget;
            new QGridLayout(tab);
            tabs->addTab(tab, u"Tab"_s);
        }
        auto *box = new QGroupBox(u"Box"_s);
        tabs->widget(tabs->count() - 1)->layout()->addWidget(box);
        grids[i] = new QGridLayout(box);
    }
    return grids;
}

/// @p count controls, dealt out to the boxes in turn.
template <typename Control, typename... Arguments>
void deal(const Grids &grids, int count, Arguments... arguments)
{
    for (int i = 0; i < count; ++i) {
        QGridLayout *grid = grids[static_cast<std::size_t>(i) % grids.size()];
        const int place = grid->count();
        grid->addWidget(new Control(arguments...), place / Columns, place % Columns);
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QMainWindow window;
    window.setStyleSheet(
        u"QGroupBox{border: 1px solid gray; border-radius: 3px; margin-top: 0.5em;}"
        "QGroupBox::title{subcontrol-origin: margin; left: 10px; padding: 0 3px 0 3px;}"_s);
    auto *tabs = new QTabWidget;
    const Grids grids = makeBoxes(tabs);
    deal<QLabel>(grids, 89, u"A label"_s);
    deal<QSpinBox>(grids, 73);
    deal<QPushButton>(grids, 43, u"Button"_s);
    deal<QRadioButton>(grids, 16, u"Choice"_s);
    deal<QComboBox>(grids, 9);
    deal<QDial>(grids, 5);
    deal<QCheckBox>(grids, 5, u"Option"_s);
    deal<QSlider>(grids, 2);
    deal<QTableWidget>(grids, 2);
    deal<QTextEdit>(grids, 1);
    window.setCentralWidget(tabs);
    window.resize(1000, 500);
    window.show();
    return QApplication::exec();
}
