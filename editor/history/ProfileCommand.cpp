#include "history/ProfileCommand.h"

#include "document/LXDocumentInterface.h"

static QDataStream& operator<<(QDataStream& stream, const ProfileValues& values)
{
    return stream << values.before.GetData() << values.after.GetData();
}

static QDataStream& operator>>(QDataStream& stream, ProfileValues& values)
{
    QByteArray before;
    QByteArray after;
    stream >> before >> after;
    values.before = ZKCMSProfile(before);
    values.after = ZKCMSProfile(after);
    return stream;
}

ProfileCommand::ProfileCommand(LXDocumentInterface* document, const ZKCMSProfile& after)
    : ValueCommand(ProfileValues{{}, document->GetICCProfile(), after}), m_pDocument(document)
{}

void ProfileCommand::Redo(ProfileValues& values)
{
    m_pDocument->SetICCProfile(values.after);
}

void ProfileCommand::Undo(ProfileValues& values)
{
    m_pDocument->SetICCProfile(values.before);
}
