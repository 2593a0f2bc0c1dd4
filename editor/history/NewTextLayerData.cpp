#include "history/NewTextLayerData.h"

#include "history/CommandDataType.h"
#include "history/NewLayerData_p.h"

#include <QMatrix4x4>

NewTextLayerData::NewTextLayerData()
{
    m_pPrivate->isText = true;
}

void NewTextLayerData::SetFont(const QFont& font)
{
    m_pPrivate->text.font = font;
}

void NewTextLayerData::SetBrush(const QBrush& brush)
{
    m_pPrivate->text.brush = brush;
}

void NewTextLayerData::SetPosition(const QPointF& position)
{
    m_pPrivate->text.position = position;
}

void NewTextLayerData::SetStyle(int style)
{
    m_pPrivate->text.deformation.style = style;
}

void NewTextLayerData::SetOrientation(int orientation)
{
    m_pPrivate->text.deformation.orientation = orientation;
}

void NewTextLayerData::SetBend(double percent)
{
    m_pPrivate->text.deformation.bend = percent;
}

void NewTextLayerData::SetHDistortion(double percent)
{
    m_pPrivate->text.deformation.hDistortion = percent;
}

void NewTextLayerData::SetVDistortion(double percent)
{
    m_pPrivate->text.deformation.vDistortion = percent;
}

void NewTextLayerData::SetTransformation(const QMatrix4x4& matrix)
{
    m_pPrivate->text.transform = matrix.toTransform();
}

void NewTextLayerData::SetRenderMode(int mode)
{
    m_pPrivate->text.renderMode = mode;
}

int NewTextLayerData::GetDataType() const
{
    return CommandDataType::NewTextLayer;
}
