#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QString>
#include <QWidget>

class QButtonGroup;
class QFrame;
class QToolBar;
struct BlueLook;

/// A dark blue look for the whole application, and a strip of four buttons "A" by which the user
/// picks the size of the font. Nothing creates one so far: the program runs in the toolkit's own
/// look.
///
/// To be created with the main window, before that is shown; the choice of the last session's size
/// holds from then on, the rest from applyStyle() on. The object is the strip, to be put where the
/// user shall find it. Its end puts back what the application had.
class MainAppStyle : public QWidget
{
    Q_OBJECT

public:
    /// @param mainWindow the parent, whose tool bars and buttons follow the size of the font. Its
    /// own style sheet gives way to that of the look and isn't put back.
    explicit MainAppStyle(QWidget *mainWindow);
    /// Puts back the application's style, palette, font and style sheet.
    ~MainAppStyle() override;

    /// Sets the look on the application, with the fonts of the resources, which may be missing: the
    /// system's font then stays. @p widget is the main window's; it gets a base sheet of its own.
    void applyStyle(QWidget *widget);

signals:
    /// The look has brought another colour of text.
    void textColorChanged(QColor colorNew, QColor colorOld);
    /// @p fontSize is the rule of the new size, as "QWidget {font-size: 16px}", or "Style end" when
    /// the look ends.
    void fontSizeChanged(QString fontSize);

public slots:
    /// Takes the size of the button that sent the signal; without such a sender nothing happens.
    void setFontSizeStyle();

private:
    QFrame *createSizeStrip();
    void clickStoredSize();
    /// Gives @p widget its base sheet and the application the fonts. Returns the folder of the
    /// pictures that aren't resources.
    QString setBaseStyle(QWidget *widget);
    /// Sets the toolkit's style and composes the look with @p background in both places.
    BlueLook composeStyle(const QColor &background, const QString &folder);
    void nameToolButtons();
    void adaptToolBar(QToolBar *bar, int fontPixels);

    QString m_savedStyleSheet;
    QPalette m_savedPalette;
    QFont m_savedFont;
    QString m_savedStyleName;
    QWidget *m_mainWindow; ///< not owned
    QButtonGroup *m_sizeButtons; ///< ids 0 to 3, from the largest font to the smallest
};
