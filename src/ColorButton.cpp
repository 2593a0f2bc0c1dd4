#include "ColorButton.h"

#include "core/ZKActivateAction.h"
#include "gui/ZKButtonsContainer.h"
#include "utils/ZKIconHelper.h"

#include <QCoreApplication>
#include <QKeySequence>

namespace {
constexpr int ToolBoxPosition = 10;
} // namespace

std::unique_ptr<ZKButtonsContainer> MakeColorButton(ZKActivateAction* picker, ZKActivateAction* sampler)
{
    if (!picker && !sampler) return nullptr;

    auto button = std::make_unique<ZKButtonsContainer>(nullptr);
    // The picker has the first place: it is what the button shows and what its key chooses.
    button->BindAction(picker, QCoreApplication::translate("ColorPickerPrivate", "Color picker tool"),
                       ZKIconHelper::DisabledIcon(QStringLiteral("theme:picker.png")));
    button->BindAction(sampler, QCoreApplication::translate("ColorSamplerPrivate", "Color sampler tool"),
                       ZKIconHelper::DisabledIcon(QStringLiteral("theme:sampler.png")));
    button->RegisterButton(ToolBoxPosition);
    button->SetShortcut(QKeySequence(Qt::Key_I));
    button->SetCycleShortcut(QKeySequence(Qt::SHIFT + Qt::Key_I));
    return button;
}
