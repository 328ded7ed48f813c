#pragma once

#include <QColor>
#include <QList>
#include <QString>

/// One curve of a chart: what it shows, and its samples of late.
///
/// Address, motor bank, command and type together are its key. Nothing keeps two lines from having
/// the same one; both then get the same values.
class ChartLine
{
public:
    /// No samples, and a limit of 100.
    /// @param type axis parameter number
    /// @param name text of the legend
    /// @param color pen of the curve and its legend
    ChartLine(quint8 address, quint8 motorBank, quint8 command, quint8 type, QString name,
              const QColor &color);

    /// Module address of the value.
    quint8 address() const { return m_address; }
    /// Gives the line another module address, and so another key. The samples stay.
    void setAddress(quint8 address) { m_address = address; }
    /// Motor or bank number.
    quint8 motorBank() const { return m_motorBank; }
    /// Number of the command that reads the value.
    quint8 command() const { return m_command; }
    /// Axis parameter number.
    quint8 type() const { return m_type; }
    /// Text of the legend.
    QString name() const { return m_name; }
    /// Pen of the curve and its legend.
    QColor color() const { return m_color; }
    /// Whether these four are the key of this line.
    bool hasKey(quint8 address, quint8 motorBank, quint8 command, quint8 type) const;

    /// The oldest first, no more than maxSamples().
    const QList<double> &samples() const { return m_samples; }
    /// The samples smoothed by a running filter that gives each new one a fifth of the weight.
    double smoothed() const { return m_smoothed; }
    /// Appends a sample; the oldest ones beyond the limit go.
    void addValue(double value);
    /// Forgets all samples. The smoothed value stays.
    void clearValues();

    /// The limit; below 1 the line keeps no samples.
    int maxSamples() const { return m_maxSamples; }
    /// Limits the samples to @p maxSamples; the oldest ones beyond it go. Below 1 none are kept,
    /// and since a line without room for samples never gets any again, later calls do nothing.
    void setMaxSamples(int maxSamples);

private:
    void trim();

    quint8 m_address;
    quint8 m_motorBank;
    quint8 m_command;
    quint8 m_type;
    QString m_name;
    QList<double> m_samples;
    double m_smoothed = 0;
    QColor m_color;
    int m_maxSamples = 100;
};
