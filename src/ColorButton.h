#pragma once

#include <memory>

class ZKActivateAction;
class ZKButtonsContainer;

/// The one tool-box button of the two tools that take colors out of the picture, at its place and with its
/// keys. A tool that is missing (null) is left out; without both there is no button. Main thread only.
std::unique_ptr<ZKButtonsContainer> MakeColorButton(ZKActivateAction* picker, ZKActivateAction* sampler);
