#include "history/GuidesCommand.h"

#include "document/LXDocumentInterface.h"
#include "history/GuideStream.h"

static QDataStream& operator<<(QDataStream& stream, const GuidesValues& values)
{
    GuideStream::Write(stream, values.before);
    GuideStream::Write(stream, values.after);
    return stream;
}

static QDataStream& operator>>(QDataStream& stream, GuidesValues& values)
{
    values.before = GuideStream::Read(stream);
    values.after = GuideStream::Read(stream);
    return stream;
}

GuidesCommand::GuidesCommand(LXDocumentInterface* document, const LXGuides& after)
    : ValueCommand(GuidesValues{{}, document->GetGuides(), after}), m_pDocument(document)
{}

void GuidesCommand::Redo(GuidesValues& values)
{
    m_pDocument->SetGuides(values.after);
}

void GuidesCommand::Undo(GuidesValues& values)
{
    m_pDocument->SetGuides(values.before);
}
