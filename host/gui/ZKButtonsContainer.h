#pragma once

#include "gui/LToolBoxButton.h"

#include <memory>

class ZKActivateAction;
class ZKButtonsContainerPrivate;

/// One button of the tool box that stands for several tools. It shows one of them, and a press chooses that
/// one; the menu and the cycle key choose among all. Main thread only.
///
/// The tool bound first is shown at first; later the one that became the chosen tool last, however that
/// came about. The button is checked while the tool that it shows is the chosen one. A tool that refuses to
/// be left leaves everything as it is.
class ZK_HOST_EXPORT ZKButtonsContainer : public LToolBoxButton
{
    Q_OBJECT

public:
    explicit ZKButtonsContainer(QWidget* parent = nullptr);
    ~ZKButtonsContainer() override;

    /// Adds a tool behind the ones that are bound. The action isn't owned; a destroyed one leaves the
    /// button. Null is ignored, and so is an action that is bound already.
    /// @param text  names the tool in the tool tip and in the menu
    void BindAction(ZKActivateAction* action, const QString& text, const QIcon& icon);

    /// Puts the button into the program's tool box.
    /// @param position  as in LToolBoxWidget::AddToolButton()
    void RegisterButton(int position);

private:
    std::unique_ptr<ZKButtonsContainerPrivate> m_pPrivate;
};
