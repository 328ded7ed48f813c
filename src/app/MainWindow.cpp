#include "app/MainWindow.h"

#include "app/Stepper.h"

#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>

using namespace Qt::StringLiterals;

MainWindow::MainWindow(QWidget *parent, Qt::WindowFlags flags)
    : QMainWindow(parent, flags)
{
    setWindowTitle(u"ZDRM-7710/7711"_s);
    setStyleSheet(
        u"QGroupBox{border: 1px solid gray; border-radius: 3px; margin-top: 0.5em;}"
        "QGroupBox::title{subcontrol-origin: margin; left: 10px; padding: 0 3px 0 3px;}"_s);
    m_stepper = new Stepper(this);
    setCentralWidget(m_stepper);
    createMenus();
}

void MainWindow::createMenus()
{
    QMenu *file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("Export settings to *.ini"), m_stepper, &Stepper::exportSettings);
    file->addAction(tr("Import settings from *.ini"), m_stepper, &Stepper::importSettings);
    file->addSeparator();
    file->addAction(tr("Export settings to ZDRL"), m_stepper, &Stepper::exportSettingsToZDRL);
    file->addSeparator();
    file->addAction(tr("Exit"), this, &MainWindow::exitProgram);

    QMenu *info = menuBar()->addMenu(tr("&Info"));
    m_velocityDrawerAction =
        info->addAction(tr("Show velocity graph"), this, &MainWindow::velocityDrawerTriggered);
    m_positionDrawerAction =
        info->addAction(tr("Show position graph"), this, &MainWindow::positionDrawerTriggered);
    m_torqueDrawerAction =
        info->addAction(tr("Show torque graph"), this, &MainWindow::torqueDrawerTriggered);
    for (QAction *action : {m_velocityDrawerAction, m_positionDrawerAction, m_torqueDrawerAction}) {
        action->setCheckable(true);
    }

    QMenu *help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&About"), this, &MainWindow::showVersionInfo);
}

void MainWindow::exitProgram()
{
    close();
}

void MainWindow::showVersionInfo()
{
    // Without a parent, so that the box centres on the screen. Its texts are not translated.
    QMessageBox::about(
        nullptr, u"About this Version..."_s,
        "ZDRM-7710\n"_L1 + u"Version:  \t%1.%2\n"_s.arg(ZDR_VERSION_MAJOR).arg(ZDR_VERSION_MINOR));
}

void MainWindow::velocityDrawerTriggered()
{
    m_stepper->showVelocityDrawer(m_velocityDrawerAction->isChecked());
}

void MainWindow::positionDrawerTriggered()
{
    m_stepper->showPositionDrawer(m_positionDrawerAction->isChecked());
}

void MainWindow::torqueDrawerTriggered()
{
    m_stepper->showTorqueDrawer(m_torqueDrawerAction->isChecked());
}
