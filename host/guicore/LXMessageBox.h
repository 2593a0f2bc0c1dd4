#pragma once

#include "ZKHostExport.h"

#include <QDialog>
#include <QString>

#include <memory>

class LXMessageBoxPrivate;
class QPushButton;

/// Tells something, or asks between a few buttons. Main thread only, asserted: a worker hands its failure
/// to the main thread.
class ZK_HOST_EXPORT LXMessageBox : public QDialog
{
    Q_OBJECT

public:
    enum Icon
    {
        NoIcon = 0,
        InformationIcon = 1,
        WarningIcon = 2,
        CriticalIcon = 3,
    };

    /// The stock buttons. The numbers are the program's own and differ from Qt's.
    enum Button
    {
        NoButton = 0,
        Yes = 0x4000,
        No = 0x10000,
        Save = 0x20000,
        Discard = 0x40000,
        Cancel = 0x100000,
        Ok = 0x200000,
        Close = 0x400000,
    };
    Q_DECLARE_FLAGS(Buttons, Button)

    /// Show a message until a button is pressed. Return that button; NoButton when the frame was closed,
    /// Escape was pressed, or the parent went away.
    /// @param parent         the window that is blocked and covered; null for all of them.
    /// @param defaultButton  what Enter presses; NoButton means the first one.
    static Button Information(QWidget* parent, const QString& title, const QString& text,
                              Buttons buttons = Close, Button defaultButton = NoButton);
    static Button Warning(QWidget* parent, const QString& title, const QString& text, Buttons buttons = Close,
                          Button defaultButton = NoButton);
    static Button Critical(QWidget* parent, const QString& title, const QString& text,
                           Buttons buttons = Close, Button defaultButton = NoButton);

    /// An empty box without buttons; for words of its own on the buttons.
    explicit LXMessageBox(QWidget* parent = nullptr);
    ~LXMessageBox() override;

    void SetWindowTitle(const QString& title);
    void SetText(const QString& text);
    QString GetText() const;
    void SetIcon(Icon icon);
    Icon GetIcon() const;

    /// Buttons stand in the order of adding. The box owns them.
    QPushButton* AddButton(const QString& text);
    QPushButton* AddButton(Button button);

    /// What Enter presses; null is ignored.
    void SetDefaultButton(QPushButton* button);

    /// Shows the box and waits for an answer. Returns the stock button that was pressed; NoButton for a
    /// button with words of its own, a closed frame and Escape, and for a box that was deleted meanwhile. A
    /// box without buttons gets Close.
    Button Exec();

    /// The button that closed the box; null before, and when the frame was closed or Escape was pressed.
    QPushButton* ClickedButton() const;

private:
    std::unique_ptr<LXMessageBoxPrivate> m_pPrivate;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(LXMessageBox::Buttons)
