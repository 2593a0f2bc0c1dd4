#include "history/TextLayerChangeCommandData.h"

#include "history/CommandDataType.h"
#include "history/DataStream.h"
#include "history/TextLayerChangeCommandData_p.h"
#include "history/TextStream.h"

TextLayerChangeCommandData::TextLayerChangeCommandData()
    : m_pPrivate(std::make_unique<TextLayerChangeCommandDataPrivate>())
{}

TextLayerChangeCommandData::~TextLayerChangeCommandData() = default;

void TextLayerChangeCommandData::SetLayerID(uint id)
{
    m_pPrivate->id = id;
}

void TextLayerChangeCommandData::SetUndoText(const QString& text)
{
    m_pPrivate->undo.text = text;
}

void TextLayerChangeCommandData::SetUndoFont(const QFont& font)
{
    m_pPrivate->undo.font = font;
}

void TextLayerChangeCommandData::SetUndoBrush(const QBrush& brush)
{
    m_pPrivate->undo.brush = brush;
}

void TextLayerChangeCommandData::SetUndoPosition(const QPointF& position)
{
    m_pPrivate->undo.position = position;
}

void TextLayerChangeCommandData::SetUndoStyle(int style)
{
    m_pPrivate->undo.deformation.style = style;
}

void TextLayerChangeCommandData::SetUndoOrientation(int orientation)
{
    m_pPrivate->undo.deformation.orientation = orientation;
}

void TextLayerChangeCommandData::SetUndoBend(double percent)
{
    m_pPrivate->undo.deformation.bend = percent;
}

void TextLayerChangeCommandData::SetUndoHDistortion(double percent)
{
    m_pPrivate->undo.deformation.hDistortion = percent;
}

void TextLayerChangeCommandData::SetUndoVDistortion(double percent)
{
    m_pPrivate->undo.deformation.vDistortion = percent;
}

void TextLayerChangeCommandData::SetUndoTransformation(const QMatrix4x4& matrix)
{
    m_pPrivate->undo.transform = matrix.toTransform();
}

void TextLayerChangeCommandData::SetUndoRenderMode(int mode)
{
    m_pPrivate->undo.renderMode = mode;
}

uint TextLayerChangeCommandData::GetLayerID() const
{
    return m_pPrivate->id;
}

QString TextLayerChangeCommandData::GetUndoText() const
{
    return m_pPrivate->undo.text;
}

QFont TextLayerChangeCommandData::GetUndoFont() const
{
    return m_pPrivate->undo.font;
}

QBrush TextLayerChangeCommandData::GetUndoBrush() const
{
    return m_pPrivate->undo.brush;
}

QPointF TextLayerChangeCommandData::GetUndoPosition() const
{
    return m_pPrivate->undo.position;
}

int TextLayerChangeCommandData::GetUndoStyle() const
{
    return m_pPrivate->undo.deformation.style;
}

int TextLayerChangeCommandData::GetUndoOrientation() const
{
    return m_pPrivate->undo.deformation.orientation;
}

double TextLayerChangeCommandData::GetUndoBend() const
{
    return m_pPrivate->undo.deformation.bend;
}

double TextLayerChangeCommandData::GetUndoHDistortion() const
{
    return m_pPrivate->undo.deformation.hDistortion;
}

double TextLayerChangeCommandData::GetUndoVDistortion() const
{
    return m_pPrivate->undo.deformation.vDistortion;
}

QMatrix4x4 TextLayerChangeCommandData::GetUndoTransformation() const
{
    return QMatrix4x4(m_pPrivate->undo.transform);
}

int TextLayerChangeCommandData::GetUndoRenderMode() const
{
    return m_pPrivate->undo.renderMode;
}

int TextLayerChangeCommandData::GetDataType() const
{
    return CommandDataType::TextLayerChange;
}

bool TextLayerChangeCommandData::Serialize(IWriter* writer) const
{
    return DataStream::Write(writer, [this](QDataStream& stream) {
        stream << m_pPrivate->id << m_pPrivate->undo << m_pPrivate->redo << m_pPrivate->hasRedo;
    });
}

bool TextLayerChangeCommandData::Deserialize(IReader* reader)
{
    TextLayerChangeCommandDataPrivate read;
    const bool isWhole = DataStream::Read(reader, [&read](QDataStream& stream) {
        stream >> read.id >> read.undo >> read.redo >> read.hasRedo;
    });
    if (isWhole) *m_pPrivate = read;
    return isWhole;
}
