#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QStringList>

class ParameterPanel;

/// A module and its transport in one: answers the panels as a transport does, within their own
/// signal, and writes down what they asked for.
class FakeModule : public QObject
{
public:
    /// Values of the parameters by number; 0 where there is none.
    QHash<int, int> values;
    /// The largest value that the module takes for a parameter. It limits higher ones and answers
    /// with what it took.
    QHash<int, int> largest;
    /// False: no answer comes, as from a module that is lost or a transport that isn't open.
    bool answering = true;

    /// Listens to @p panel. Every reply goes to all panels, in the order of attaching.
    void attach(ParameterPanel *panel);

    /// What was asked since the last call: "get 1 0 129" (address, bank, number) or "set 1 0 129
    /// 1".
    QStringList takeLog();

private:
    void enter(const QString &line);
    void answer(char address, char motorBank, char type);

    QList<ParameterPanel *> m_panels;
    QStringList m_log;
};
