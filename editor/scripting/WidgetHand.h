#pragma once

#include <QString>
#include <QStringList>

class InputDriver;
class QAction;
class QComboBox;
class QMenu;
class QWidget;

/// Works the controls of the program as a person's hand does, with real input where there is input for it.
/// What can't be done, since a widget is hidden or of another kind, throws a ScriptError. Main thread only.
class WidgetHand
{
public:
    explicit WidgetHand(InputDriver& input) : m_Input(input) {}

    /// Hidden, disabled or covered by a modal window: a person couldn't.
    static void RequireUsable(const QWidget* widget);

    /// In the middle; of a check box or radio button on its mark.
    void Click(QWidget* widget) const;
    /// Clicks until it is checked or unchecked.
    void SetChecked(QWidget* widget, bool checked) const;
    /// Types into a spin box, drags a slider.
    void SetValue(QWidget* widget, double value) const;
    /// Types over what a field holds. In windows that aren't dialogs Return ends the entry, else Tab.
    void SetText(QWidget* widget, const QString& text) const;
    /// Picks an item of a list, a combo box, tabs or an open menu, or a cell of a control of nine.
    void Choose(QWidget* widget, int index) const;
    /// The same; the text is one of WidgetReading::Items().
    void Choose(QWidget* widget, const QString& text) const;
    /// Walks down an open menu by the texts of entries.
    void ChooseInMenu(QMenu* menu, const QStringList& texts) const;

private:
    void TypeOver(QWidget* field, const QString& text) const;
    void EndEntry(const QWidget* field) const;
    void ChooseInCombo(QComboBox* combo, int index) const;
    void ClickAction(QMenu* menu, QAction* action) const;

    InputDriver& m_Input;
};
