// The operations of LXDocumentInterface on what a document has beside its layers and its selection.

#include "document/LXDocumentInterface.h"
#include "document/LXDocumentInterface_p.h"

namespace {
constexpr int LastUnit = 2;
}

ZKCMSProfile LXDocumentInterface::GetICCProfile() const
{
    return m_pPrivate->Properties().profile;
}

void LXDocumentInterface::SetICCProfile(const ZKCMSProfile& profile)
{
    if (GetICCProfile() == profile) return;
    m_pPrivate->ChangeProperties([&](DocumentProperties& properties) { properties.profile = profile; });
    emit ICCProfileChanged();
}

double LXDocumentInterface::GetDPI() const
{
    return m_pPrivate->Properties().dpi;
}

void LXDocumentInterface::SetDPI(double dpi)
{
    // Written so that what isn't a number is refused too.
    if (!(dpi > 0.0) || qIsInf(dpi) || GetDPI() == dpi) return;
    m_pPrivate->ChangeProperties([=](DocumentProperties& properties) { properties.dpi = dpi; });
    emit ResolutionChanged(dpi);
}

int LXDocumentInterface::GetUnit() const
{
    return m_pPrivate->Properties().unit;
}

void LXDocumentInterface::SetUnit(int unit)
{
    if (unit < 0 || unit > LastUnit || GetUnit() == unit) return;
    m_pPrivate->ChangeProperties([=](DocumentProperties& properties) { properties.unit = unit; });
    emit UnitChanged(unit);
}

LXGuides LXDocumentInterface::GetGuides() const
{
    return m_pPrivate->Properties().guides;
}

void LXDocumentInterface::SetGuides(const LXGuides& guides)
{
    if (GetGuides() == guides) return;
    m_pPrivate->ChangeProperties([&](DocumentProperties& properties) { properties.guides = guides; });
    emit GuidesChanged();
}

QString LXDocumentInterface::GetDocumentName() const
{
    return m_pPrivate->Properties().name;
}

void LXDocumentInterface::SetDocumentName(const QString& name)
{
    if (GetDocumentName() == name) return;
    m_pPrivate->ChangeProperties([&](DocumentProperties& properties) { properties.name = name; });
    emit DocumentNameChanged(name);
}
