#pragma once

#include <QMainWindow>

class QAction;
class Stepper;

/// The one window: a shell of menus around its central widget, the Stepper. It has no state but
/// that of its three checkable entries, and it stores nothing.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr, Qt::WindowFlags flags = {});

public slots:
    /// Closes the window, exactly as its close box does.
    void exitProgram();
    void showVersionInfo();
    void velocityDrawerTriggered();
    void positionDrawerTriggered();
    void torqueDrawerTriggered();

private:
    void createMenus();

    Stepper *m_stepper; ///< the central widget, owned by the window
    QAction *m_velocityDrawerAction = nullptr; ///< owned by its menu, as are the next two
    QAction *m_positionDrawerAction = nullptr;
    QAction *m_torqueDrawerAction = nullptr;
};
