#include "FillDocument.h"

#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"

#include <QColor>
#include <QMap>

namespace {
const QMap<QChar, QRgb>& Colors()
{
    static const QMap<QChar, QRgb> colors{{'.', 0x00000000}, {'#', 0xFF000000}, {'w', 0xFFFFFFFF},
                                          {'r', 0xFFFF0000}, {'g', 0xFF00FF00}, {'b', 0xFF0000FF}};
    return colors;
}

const QMap<QChar, QRgb>& Values()
{
    static const QMap<QChar, QRgb> values{{'.', 0x00000000}, {'#', 0xFF000000}, {'h', 0x80000000}};
    return values;
}

LXImage32 Draw(const QStringList& rows, const QMap<QChar, QRgb>& palette)
{
    LXImage32 image(rows.first().size(), rows.size());
    for (int y = 0; y < image.Height(); ++y) {
        for (int x = 0; x < image.Width(); ++x) {
            Q_ASSERT(palette.contains(rows[y][x]));
            image.SetColor(x, y, LXRGBA32i(palette.value(rows[y][x])));
        }
    }
    return image;
}

QStringList Show(const LXImage32& image, const QMap<QChar, QRgb>& palette, QRgb significant)
{
    QStringList rows;
    for (int y = 0; y < image.Height(); ++y) {
        QString row;
        for (int x = 0; x < image.Width(); ++x) {
            row += palette.key(image.GetColor(x, y).value & significant, '?');
        }
        rows.append(row);
    }
    return rows;
}
} // namespace

LXImage32 ImageOf(const QStringList& rows)
{
    return Draw(rows, Colors());
}

FillDocument::FillDocument(int width, int height)
    : m_pDocument(LXDocumentFactory::Instance()->Create(LXDocumentInterface::Argb32))
{
    m_pDocument->SetDocumentSize({width, height});
}

FillDocument::~FillDocument()
{
    LXDocumentFactory::Instance()->Release(m_pDocument);
}

void FillDocument::AddLayer(const QStringList& rows, const QPoint& offset)
{
    m_pDocument->AddLayer(QStringLiteral("Layer"), ImageOf(rows), offset);
}

void FillDocument::SetMask(const QStringList& values, bool reveals, const QPoint& offset)
{
    m_pDocument->AddMask(1, reveals);
    m_pDocument->SetMaskImage(1, Draw(values, Values()), offset);
}

void FillDocument::SetSelection(const QStringList& values, const QPoint& offset)
{
    m_pDocument->SetSelectionMask(Draw(values, Values()), offset);
}

QStringList FillDocument::Layer() const
{
    return Show(*m_pDocument->GetLayerImage(1), Colors(), 0xFFFFFFFF);
}

QStringList FillDocument::Mask() const
{
    return Show(*m_pDocument->GetMaskImage(1), Values(), 0xFF000000);
}

QRgb FillDocument::LayerPixel(int x, int y) const
{
    const QPoint origin = m_pDocument->GetLayerGeometry(1).topLeft();
    return m_pDocument->GetLayerImage(1)->GetColor(x - origin.x(), y - origin.y()).value;
}

int FillDocument::MaskValue(int x, int y) const
{
    const QPoint origin = m_pDocument->GetMaskGeometry(1).topLeft();
    return m_pDocument->GetMaskImage(1)->GetColor(x - origin.x(), y - origin.y()).Alpha();
}

FillJobData FillDocument::Click(int x, int y, const QColor& color)
{
    FillJobData data;
    data.position = QPoint(x, y);
    data.brush = color;
    data.layerId = 1;
    data.tolerance = 32;
    return data;
}
