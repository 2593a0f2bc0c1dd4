#include "history/ImageSizeCommand.h"

#include "document/LXDocumentInterface.h"
#include "history/CanvasTransform.h"
#include "history/ImageSizeCommandData_p.h"

class ImageSizeCommandPrivate
{
public:
    LXDocumentInterface* document = nullptr;
};

namespace {
/// The size can be had, and isn't what the document has.
bool ChangesPixels(const ImageSizeCommandDataPrivate& change, const QSize& size)
{
    const int most = LXDocumentInterface::MAX_DOC_DIMENSION;
    return change.isResampled && change.newSize != size && !change.newSize.isEmpty() &&
           change.newSize.width() <= most && change.newSize.height() <= most && !size.isEmpty();
}
} // namespace

ImageSizeCommand::ImageSizeCommand(LXDocumentInterface* document)
    : m_pPrivate(std::make_unique<ImageSizeCommandPrivate>())
{
    m_pPrivate->document = document;
}

ImageSizeCommand::~ImageSizeCommand() = default;

void ImageSizeCommand::RedoExecute(LexoCommandData* data)
{
    LXDocumentInterface* document = m_pPrivate->document;
    ImageSizeCommandDataPrivate& change =
        *ImageSizeCommandDataPrivate::Get(static_cast<ImageSizeCommandData*>(data));
    if (ChangesPixels(change, document->GetDocumentSize())) {
        change.before = CanvasState::Of(document);
        CanvasTransform::Resized(change.before, change.newSize, change.type).ApplyTo(document);
    }
    document->SetDPI(change.newResolution);
}

void ImageSizeCommand::UndoExecute(LexoCommandData* data)
{
    const ImageSizeCommandDataPrivate& change =
        *ImageSizeCommandDataPrivate::Get(static_cast<ImageSizeCommandData*>(data));
    if (!change.before.size.isEmpty()) change.before.ApplyTo(m_pPrivate->document);
    m_pPrivate->document->SetDPI(change.oldResolution);
}

bool ImageSizeCommand::AcceptsData(const LexoCommandData* data) const
{
    return dynamic_cast<const ImageSizeCommandData*>(data) != nullptr;
}
