#include "history/CropCommand.h"

#include "document/LXDocumentInterface.h"

static QDataStream& operator<<(QDataStream& stream, const CropValues& values)
{
    return stream << values.crop.transform << values.crop.size << values.crop.isHiding
                  << values.crop.isResampled << values.crop.extension << values.before;
}

static QDataStream& operator>>(QDataStream& stream, CropValues& values)
{
    return stream >> values.crop.transform >> values.crop.size >> values.crop.isHiding >>
           values.crop.isResampled >> values.crop.extension >> values.before;
}

CropCommand::CropCommand(LXDocumentInterface* document, const CanvasCrop& crop)
    : ValueCommand({crop, CanvasState()}), m_pDocument(document)
{}

void CropCommand::Redo(CropValues& values)
{
    values.before = CanvasState::Of(m_pDocument);
    CanvasTransform::Cropped(values.before, values.crop).ApplyTo(m_pDocument);
}

void CropCommand::Undo(CropValues& values)
{
    values.before.ApplyTo(m_pDocument);
}
