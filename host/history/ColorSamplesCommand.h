#pragma once

#include "ZKHostExport.h"

#include "history/LexoCommand.h"

#include <memory>

class ColorSamplesCommandPrivate;
class LXDocumentInterface;

/// Adds, removes or moves a color sample, or removes all. Data: ColorSamplesCommandDataAdd,
/// ColorSamplesCommandDataRemove, ColorSamplesCommandDataMove, ColorSamplesCommandDataClear. Main thread.
class ZK_HOST_EXPORT ColorSamplesCommand : public LexoCommand
{
public:
    explicit ColorSamplesCommand(LXDocumentInterface* document);
    ~ColorSamplesCommand() override;

    void RedoExecute(LexoCommandData* data) override;
    void UndoExecute(LexoCommandData* data) override;

protected:
    bool AcceptsData(const LexoCommandData* data) const override;

private:
    std::unique_ptr<ColorSamplesCommandPrivate> m_pPrivate;
};
