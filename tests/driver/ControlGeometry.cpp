#include "driver/ControlGeometry.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDial>
#include <QRadioButton>
#include <QSlider>
#include <QStyle>
#include <QStyleOption>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace driver::geometry {

namespace {

constexpr double pi = std::numbers::pi;

// Radius of the circle on which the mouse turns a dial: wide, since that tells values best apart.
double dialRadius(const QWidget *dial)
{
    return std::max(4.0, std::min(dial->width(), dial->height()) / 2.0 - 4.0);
}

// The angle that a dial sweeps from its least to its greatest value, gap at the bottom.
double sweep(const QDial *dial)
{
    return dial->wrapping() ? 2 * pi : 5 * pi / 3;
}

QPoint dialPoint(const QDial *dial, int value)
{
    const double range = std::max(1.0, static_cast<double>(dial->maximum()) - dial->minimum());
    double part = (static_cast<double>(value) - dial->minimum()) / range;
    if (dial->invertedAppearance()) {
        part = 1 - part;
    }
    const double angle = 3 * pi / 2 - (2 * pi - sweep(dial)) / 2 - part * sweep(dial);
    const double radius = dialRadius(dial);
    return QPointF(dial->width() / 2.0 + radius * std::cos(angle),
                   dial->height() / 2.0 - radius * std::sin(angle))
        .toPoint();
}

QStyleOptionSlider sliderOption(const QSlider *slider, int value)
{
    QStyleOptionSlider option;
    option.initFrom(slider);
    option.orientation = slider->orientation();
    option.subControls = QStyle::SC_SliderGroove | QStyle::SC_SliderHandle;
    option.minimum = slider->minimum();
    option.maximum = slider->maximum();
    option.tickPosition = slider->tickPosition();
    option.tickInterval = slider->tickInterval();
    option.singleStep = slider->singleStep();
    option.pageStep = slider->pageStep();
    const bool horizontal = slider->orientation() == Qt::Horizontal;
    const bool rightToLeft = option.direction == Qt::RightToLeft;
    option.upsideDown =
        horizontal ? slider->invertedAppearance() != rightToLeft : !slider->invertedAppearance();
    // Turned round already by upsideDown.
    option.direction = Qt::LeftToRight;
    if (horizontal) {
        option.state |= QStyle::State_Horizontal;
    }
    option.sliderPosition = option.sliderValue = value;
    return option;
}

QPoint sliderPoint(const QSlider *slider, int value)
{
    const QStyleOptionSlider option = sliderOption(slider, value);
    return slider->style()
        ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider)
        .center();
}

} // namespace

QRect visibleRect(const QWidget *widget)
{
    // Not QWidget::visibleRegion(), which also leaves out what the widget's own children paint.
    QRect visible = widget->rect();
    for (const QWidget *each = widget; !each->isWindow(); each = each->parentWidget()) {
        const QWidget *parent = each->parentWidget();
        visible &= QRect(-widget->mapTo(parent, QPoint()), parent->size());
    }
    return visible;
}

QPoint clickPoint(const QWidget *widget)
{
    if (qobject_cast<const QCheckBox *>(widget) || qobject_cast<const QRadioButton *>(widget)) {
        QStyleOptionButton option;
        option.initFrom(widget);
        const bool check = qobject_cast<const QCheckBox *>(widget);
        return widget->style()
            ->subElementRect(check ? QStyle::SE_CheckBoxIndicator : QStyle::SE_RadioButtonIndicator,
                             &option, widget)
            .center();
    }
    if (const auto *combo = qobject_cast<const QComboBox *>(widget)) {
        QStyleOptionComboBox option;
        option.initFrom(combo);
        option.editable = combo->isEditable();
        return combo->style()
            ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, combo)
            .center();
    }
    const QRect visible = visibleRect(widget);
    return visible.isEmpty() ? widget->rect().center() : visible.center();
}

bool hasValuePoints(const QWidget *control)
{
    return qobject_cast<const QDial *>(control) || qobject_cast<const QSlider *>(control);
}

QPoint valuePoint(const QAbstractSlider *control, int value)
{
    if (const auto *dial = qobject_cast<const QDial *>(control)) {
        return dialPoint(dial, value);
    }
    return sliderPoint(qobject_cast<const QSlider *>(control), value);
}

int valueTolerance(const QAbstractSlider *control)
{
    const auto *dial = qobject_cast<const QDial *>(control);
    const QPoint span = dial
        ? QPoint()
        : valuePoint(control, control->maximum()) - valuePoint(control, control->minimum());
    const double pixels = dial ? dialRadius(dial) * sweep(dial) : span.manhattanLength();
    const double range = static_cast<double>(control->maximum()) - control->minimum();
    // A pixel and a half to either side: one for the rounding of both coordinates, the rest for
    // ours.
    return static_cast<int>(std::ceil(1.5 * range / std::max(1.0, pixels)));
}

} // namespace driver::geometry
