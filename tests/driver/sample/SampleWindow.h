#pragma once

#include <QMainWindow>

class QLabel;
class QTabWidget;

/// A window with one control of every kind that the driver's scripts use. What a control has
/// noticed of the user stands in a label beside it.
class SampleWindow : public QMainWindow
{
    Q_OBJECT

public:
    SampleWindow();

private:
    void createMenus();
    QWidget *createButtonPage();
    QWidget *createValuePage();
    QWidget *createListPage();
    QWidget *createObstaclePage();
    QLabel *createLabel(const QString &name);
    void askForName();
    void saveFile();
    void showAbout();

    QTabWidget *m_tabs;
    QLabel *m_lblEvent;
};
