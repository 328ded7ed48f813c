#pragma once

#include "style/MainAppStyle.h"
#include "support/TestCase.h"

#include <QMainWindow>
#include <QTemporaryDir>

#include <memory>

class QAction;
class QToolBar;
class QToolButton;

/// Base of the tests of the look: a main window for each test function, with a tool bar that has
/// one button with an icon and one without, and settings in a folder of their own.
class MainAppStyleTest : public TestCase
{
    Q_OBJECT

protected slots:
    void initTestCase();
    void init();
    void cleanup();

protected:
    /// Makes the look, as a child of the window.
    void makeStyle();
    QToolButton *sizeButton(int id) const;
    /// Clicks on the size button with the mouse.
    void click(int id);
    /// The rule of each size, by button id.
    static QStringList sizeRules();

    std::unique_ptr<QMainWindow> m_window;
    QToolBar *m_bar = nullptr;
    QAction *m_iconAction = nullptr;
    QAction *m_textAction = nullptr;
    MainAppStyle *m_style = nullptr; ///< the window's

private:
    QTemporaryDir m_folder;
};
