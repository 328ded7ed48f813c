#pragma once

#include <QObject>

/// Base of every test class. A warning or critical line of the toolkit (a failed connect, a slot
/// that its name doesn't find) fails the test function that saw it.
///
/// A test class with an init() of its own calls TestCase::init() first.
class TestCase : public QObject
{
    Q_OBJECT

protected slots:
    void init();
};
