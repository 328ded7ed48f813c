#include "style/IconTinting.h"

#include "style/PictureTools.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDebug>
#include <QIcon>
#include <QLabel>
#include <QPalette>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace {

/// The side of the picture that an icon is asked for: more than any icon is shown at, on a screen
/// of 200 %, too.
constexpr int IconSide = 200;

QIcon tintedIcon(const QIcon &icon, const QColor &color)
{
    return QIcon(tinted(icon.pixmap(IconSide, IconSide), color));
}

/// For whatever has an icon() and a setIcon().
template <typename IconBearer>
void tintIcons(const QList<IconBearer *> &bearers, const QColor &color, const char *label)
{
    for (IconBearer *bearer : bearers) {
        bearer->setIcon(tintedIcon(bearer->icon(), color));
    }
    qDebug() << label << bearers.size();
}

void tintLabels(const QWidget *widget, const QColor &color, const char *label)
{
    qsizetype found = 0;
    const auto labels = widget->findChildren<QLabel *>();
    for (QLabel *pictureLabel : labels) {
        const QPixmap picture = pictureLabel->pixmap();
        if (!picture.isNull()) {
            pictureLabel->setPixmap(tinted(picture, color));
            ++found;
        }
    }
    qDebug() << label << found;
}

void tintTreeItems(const QWidget *widget, const QColor &color)
{
    const auto trees = widget->findChildren<QTreeWidget *>();
    for (QTreeWidget *tree : trees) {
        for (QTreeWidgetItemIterator item(tree); *item; ++item) {
            for (int column = 0; column < (*item)->columnCount(); ++column) {
                const QIcon icon = (*item)->icon(column);
                if (!icon.isNull()) {
                    (*item)->setIcon(column, tintedIcon(icon, color));
                }
            }
        }
    }
}

} // namespace

void setIconsToTextColor(QWidget *widget)
{
    const QColor color = QApplication::palette().color(QPalette::Text);
    tintIcons(widget->findChildren<QAbstractButton *>(), color, "setIconsToTextColor");
    tintIcons(widget->findChildren<QAction *>(), color, "setIconsToTextColorA");
    tintLabels(widget, color, "setIconsToTextColorL");
    tintTreeItems(widget, color);
}
