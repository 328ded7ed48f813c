#pragma once

class QDial;
class QSpinBox;

/// A dial and a spin box that show one value: the spin box in real units, the dial in steps, which
/// are the same units on the linear scale and fractions of a decade on the logarithmic one.
///
/// It sets one by the other and blocks the signals of the one it sets, so that the pair never
/// echoes: what else follows from a change is up to the caller.
///
/// On the logarithmic scale the ways there and back are no exact inverses: with the limit 8000000
/// the last dial step, 70, is 9999999, which the spin box clamps, and 1000 is dial step 30, whose
/// way back is 999. By design: the dial is for the order of magnitude, the spin box for the number.
class DialCoupling
{
public:
    /// Dial steps to a decade of the logarithmic scale.
    static constexpr int ScaleFactor = 10;

    /// Couples the two, which must outlive the coupling, on the linear scale. Nothing is set yet.
    DialCoupling(QDial *dial, QSpinBox *spinBox);

    /// Chooses the scale. The dial's maximum follows from the stored limit and its place from the
    /// spin box, so that a change of scale changes no value and the order of calls doesn't matter.
    void setLogarithmic(bool logarithmic);
    /// Sets the largest value: the maximum of the spin box and, in steps, that of the dial. A value
    /// above it is clamped by the toolkit, which tells so by the signals of the two.
    void setLimit(int limit);

    /// Turns the dial to where @p value stands, without its signals.
    void turnDial(int value) const;
    /// Sets the spin box to what the dial shows at @p step, without its signals.
    void setSpinBox(int step) const;

private:
    int dialMaximum() const;

    QDial *m_dial;
    QSpinBox *m_spinBox;
    bool m_logarithmic = false;
    int m_limit = 0;
};
