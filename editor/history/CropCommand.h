#pragma once

#include "history/CanvasTransform.h"
#include "history/CommandDataType.h"
#include "history/ValueCommand.h"

class LXDocumentInterface;

struct CropValues
{
    qint64 GetMemoryCost() const { return before.GetMemoryCost(); }

    void ReleaseImages() { before.ReleaseImages(); }

    CanvasCrop crop;
    CanvasState before; ///< as the last redo found the document
};

/// Gives a document a new canvas. When it throws, nothing is changed. Main thread.
class CropCommand : public ValueCommand<CropValues, CommandDataType::Crop>
{
public:
    CropCommand(LXDocumentInterface* document, const CanvasCrop& crop);

protected:
    void Redo(CropValues& values) override;
    void Undo(CropValues& values) override;

private:
    LXDocumentInterface* m_pDocument;
};
