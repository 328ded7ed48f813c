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
    /// With the menus and a new Stepper, of the size that the caller gives it.
    explicit MainWindow(QWidget *parent = nullptr, Qt::WindowFlags flags = {});

public slots:
    /// Closes the window, exactly as its close box does.
    void exitProgram();
    /// Shows the About box and returns when the user has closed it.
    void showVersionInfo();
    // Each of the next three passes the mark of its menu entry on to the Stepper.
    void velocityDrawerTriggered(); ///< shows or hides the velocity graph
    void positionDrawerTriggered(); ///< shows or hides the position graph
    void torqueDrawerTriggered(); ///< shows or hides the torque graph

private:
    void createMenus();

    Stepper *m_stepper; ///< the central widget, owned by the window
    QAction *m_velocityDrawerAction = nullptr; ///< owned by its menu, as are the next two
    QAction *m_positionDrawerAction = nullptr;
    QAction *m_torqueDrawerAction = nullptr;
};
