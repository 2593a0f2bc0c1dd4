#include "support/DocumentFixture.h"

#include "document/LXColorSampleModel.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "document/LXPathsListModel.h"
#include "document/SelectionChannels.h"

using namespace DocumentFixture;

namespace {
QString Text(const QRect& rect)
{
    return QString("(%1,%2 %3x%4)").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

QString Text(const QPoint& point)
{
    return QString("(%1,%2)").arg(point.x()).arg(point.y());
}

QString Text(const QPointF& point)
{
    return QString("(%1,%2)").arg(point.x(), 0, 'g', 17).arg(point.y(), 0, 'g', 17);
}

QString Text(const LXSubPaths& path)
{
    QString text;
    for (const QPair<LXPath, int>& subPath : path) {
        text += QString(" op %1:").arg(subPath.second);
        for (const LXPathElement& element : subPath.first) {
            text += ' ' + Text(element.GetCenterPoint()) + Text(element.GetInGuide()) +
                    Text(element.GetOutGuide()) + (element.StartsContour() ? "|" : "");
        }
    }
    return text;
}

QString Number(uint id)
{
    return QString::number(id);
}

quint32 PickPixel(Random& random)
{
    const quint32 color = static_cast<quint32>(random()) & 0xFFFFFF;
    switch (Pick(random, 0, 3)) {
    case 0: return color;
    case 1: return color | 0xFF000000;
    default: return color | static_cast<quint32>(Pick(random, 0, 255)) << 24;
    }
}

QString DescribeText(const TextContent& text)
{
    const TextDeformation& bent = text.deformation;
    const QTransform& t = text.transform;
    QString line = QString(" text \"%1\" %2 %3 %4 mode %5 bent %6 %7")
                       .arg(text.text, text.font.toString(), text.brush.color().name(QColor::HexArgb),
                            Text(text.position))
                       .arg(text.renderMode)
                       .arg(bent.style)
                       .arg(bent.orientation);
    for (const double number : {bent.bend, bent.hDistortion, bent.vDistortion, t.m11(), t.m12(), t.m13(),
                                t.m21(), t.m22(), t.m23(), t.m31(), t.m32(), t.m33()}) {
        line += QString(" %1").arg(number, 0, 'g', 14);
    }
    return line;
}

QString DescribeAdjustment(const LXAdjustment& a)
{
    QString line = QString(" adjustment %1 gamma %2").arg(a.kind).arg(a.gamma, 0, 'g', 17);
    for (const int value : {a.brightness, a.contrast, a.inBlack, a.inWhite, a.outBlack, a.outWhite, a.hue,
                            a.saturation, a.lightness}) {
        line += QString(" %1").arg(value);
    }
    return line;
}

QString DescribeLayer(LXDocumentInterface* document, int row)
{
    const LXDocumentModel* model = document->GetModel();
    const uint id = static_cast<uint>(row) + 1;
    const LXDocumentLayerLockerForRead locker(document, id);
    QString line = QString("layer %1 %2 %3 locks %4 opacity %5 mode %6 visible %7")
                       .arg(model->GetName(row), Text(document->GetLayerGeometry(id)))
                       .arg(Checksum(*document->GetLayerImage(id)), 0, 16)
                       .arg(model->GetLockFlags(row))
                       .arg(model->GetOpacity(row))
                       .arg(model->GetBlendMode(row))
                       .arg(model->GetVisible(row));
    if (document->GetLayerKind(id) == LayerKind::Text) {
        line += DescribeText(LXDocumentInterfacePrivate::Get(document)->Text(id));
    }
    if (document->GetLayerKind(id) == LayerKind::Adjustment) {
        line += DescribeAdjustment(document->GetAdjustment(id));
    }
    if (!model->HasMask(row)) return line;
    bool reveals = false;
    document->GetMaskInverted(id, &reveals);
    return line + QString(" mask %1 %2 reveals %3 linked %4")
                      .arg(Text(document->GetMaskGeometry(id)))
                      .arg(Checksum(*document->GetMaskImage(id)), 0, 16)
                      .arg(reveals)
                      .arg(model->GetMaskLinked(row));
}
} // namespace

OwnedDocument DocumentFixture::Make(const QSize& size)
{
    OwnedDocument document(LXDocumentFactory::Instance()->Create(LXDocumentInterface::Argb32));
    document->SetDocumentSize(size);
    return document;
}

SelectionChannels* DocumentFixture::ChannelsOf(const LXDocumentInterface* document)
{
    return LXDocumentInterfacePrivate::Get(document)->channels;
}

int DocumentFixture::Pick(Random& random, int lowest, int highest)
{
    return lowest + static_cast<int>(random() % static_cast<unsigned int>(highest - lowest + 1));
}

QRect DocumentFixture::PickRect(Random& random, const QRect& around, int beyond)
{
    const QRect frame = around.adjusted(-beyond, -beyond, beyond, beyond);
    const int width = Pick(random, 1, frame.width());
    const int height = Pick(random, 1, frame.height());
    return QRect(frame.left() + Pick(random, 0, frame.width() - width),
                 frame.top() + Pick(random, 0, frame.height() - height), width, height);
}

LXImage32 DocumentFixture::Noise(Random& random, const QSize& size)
{
    LXImage32 image(size.width(), size.height());
    for (int top = 0; top < size.height(); top += 16) {
        for (int left = 0; left < size.width(); left += 16) {
            const LXRGBA32i pixel(PickPixel(random));
            for (int y = top; y < qMin(top + 16, size.height()); ++y) {
                for (int x = left; x < qMin(left + 16, size.width()); ++x) {
                    image.SetColor(x, y, pixel);
                }
            }
        }
    }
    return image;
}

LXImage32 DocumentFixture::MaskNoise(Random& random, const QSize& size)
{
    LXImage32 image = Noise(random, size);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            image.SetColor(x, y, LXRGBA32i(image.GetColor(x, y).value & 0xFF000000));
        }
    }
    return image;
}

LXImage32 DocumentFixture::Filled(const QSize& size, quint32 argb)
{
    LXImage32 image(size.width(), size.height());
    image.Fill(LXRGBA32i(argb));
    return image;
}

quint64 DocumentFixture::Checksum(const LXImage32& image)
{
    quint64 sum = 14695981039346656037ULL;
    for (int y = 0; y < image.Height(); ++y) {
        for (int column = 0; column < static_cast<int>(image.m_TilesX); ++column) {
            const auto tile = image.ReadTile(column, y / 128);
            const int width = qMin(128, image.Width() - column * 128);
            for (int x = 0; x < width; ++x) {
                sum = (sum ^ tile.Pixels()[(y % 128) * 128 + x].value) * 1099511628211ULL;
            }
        }
    }
    return sum;
}

bool DocumentFixture::AreEqual(const LXImage32& a, const LXImage32& b)
{
    return a.Rect() == b.Rect() && Checksum(a) == Checksum(b);
}

namespace {
/// To the last bit.
QString Exact(const QPointF& point)
{
    return QString("%1,%2").arg(point.x(), 0, 'g', 17).arg(point.y(), 0, 'g', 17);
}

QStringList DescribePaths(const LXPathsListModel* paths)
{
    QStringList lines;
    for (int row = 0; row < paths->rowCount(); ++row) {
        lines << QString("path %1 %2").arg(paths->GetPathName(row)).arg(paths->GetPathVisible(row));
        for (const auto& [elements, operation] : paths->GetPath(row)) {
            QString line = QString("  sub path, operation %1:").arg(operation);
            for (const LXPathElement& element : elements) {
                line += QString(element.StartsContour() ? " | %1 %2 %3" : " / %1 %2 %3")
                            .arg(Exact(element.GetCenterPoint()), Exact(element.GetInGuide()),
                                 Exact(element.GetOutGuide()));
            }
            lines << line;
        }
    }
    return lines;
}

QStringList DescribeSamples(const LXColorSampleModel* samples)
{
    QStringList lines;
    for (int row = 0; row < samples->rowCount(); ++row) {
        lines << QString("sample %1 radius %2 format %3")
                     .arg(Text(samples->GetPoint(row)))
                     .arg(samples->GetSampleRadius(row))
                     .arg(samples->GetDisplayFormat(row));
    }
    return lines;
}
} // namespace

QStringList DocumentFixture::Describe(LXDocumentInterface* document)
{
    QStringList lines{QString("canvas %1").arg(Text(document->GetLayerGeometry(0)))};
    for (int row = 0; row < document->GetModel()->rowCount(); ++row) {
        lines << DescribeLayer(document, row);
    }
    if (document->HasSelection()) {
        const LXDocumentSelectionLockerForRead locker(document);
        lines << QString("selection %1 %2 around %3")
                     .arg(Text(document->GetSelectionGeometry()))
                     .arg(Checksum(document->GetSelectionMask()), 0, 16)
                     .arg(Text(document->GetSelectionBoundingRect()));
    }
    for (const SelectionChannel& channel : ChannelsOf(document)->All()) {
        lines << QString("channel %1 %2 %3")
                     .arg(channel.name, Text(channel.coverage.Rect()))
                     .arg(Checksum(channel.coverage.image), 0, 16);
    }
    return lines + DescribePaths(document->GetPathListModel()) + DescribeSamples(document->GetColorSamples());
}

QStringList DocumentFixture::DescribeWhole(LXDocumentInterface* document)
{
    QStringList lines = Describe(document);
    lines << QString("resolution %1").arg(document->GetDPI());
    lines << QString("profile %1").arg(qHash(document->GetICCProfile().GetData(), 1));
    const LXPathsListModel* paths = document->GetPathListModel();
    for (int row = 0; row < paths->rowCount(); ++row) {
        lines << QString("path %1 %2").arg(paths->GetPathName(row), Text(paths->GetPath(row)));
    }
    const LXColorSampleModel* samples = document->GetColorSamples();
    for (int row = 0; row < samples->rowCount(); ++row) {
        lines << QString("sample %1 %2 %3")
                     .arg(Text(samples->GetPoint(row)))
                     .arg(samples->GetSampleRadius(row))
                     .arg(samples->GetDisplayFormat(row));
    }
    for (const LXGuide& guide : document->GetGuides()) {
        lines << QString("guide %1 %2").arg(guide.orientation).arg(guide.position, 0, 'g', 17);
    }
    const LXDocumentLayerLockerForRead locker(document, 0);
    return lines << QString("merged %1").arg(Checksum(*document->GetLayerImage(0)), 0, 16);
}

SignalLog::SignalLog(LXDocumentInterface* document)
{
    using D = LXDocumentInterface;
    using M = LXDocumentModel;
    const auto lines = m_pLines;
    const auto note = [lines](const QString& line) { *lines << line; };
    QObject::connect(document, &D::Locked, [note] { note("Locked"); });
    QObject::connect(document, &D::Unlocked, [note] { note("Unlocked"); });
    QObject::connect(document, &D::DocumentStateChanged,
                     [note](int state) { note(QString("DocumentStateChanged %1").arg(state)); });
    QObject::connect(document, &D::DocumentNameChanged,
                     [note](const QString& name) { note("DocumentNameChanged " + name); });
    QObject::connect(document, &D::DocumentSizeChanged, [note](const QSize& size) {
        note(QString("DocumentSizeChanged %1x%2").arg(size.width()).arg(size.height()));
    });
    QObject::connect(document, &D::SelectionChanged, [note] { note("SelectionChanged"); });
    QObject::connect(document, &D::AboutSelectionMove, [note] { note("AboutSelectionMove"); });
    QObject::connect(document, &D::AboutRequesAdditionalLayer,
                     [note](uint id) { note("AboutRequesAdditionalLayer " + Number(id)); });
    QObject::connect(document, &D::AboutRequesAdditionalMask,
                     [note](uint id) { note("AboutRequesAdditionalMask " + Number(id)); });
    QObject::connect(document, &D::CompositionChanged,
                     [note](const QRect& rect) { note("CompositionChanged " + Text(rect)); });

    const M* model = document->GetModel();
    QObject::connect(model, &M::LayerDataChanged,
                     [note](uint id) { note("LayerDataChanged " + Number(id)); });
    QObject::connect(model, &M::LayerMaskChanged,
                     [note](uint id) { note("LayerMaskChanged " + Number(id)); });
    QObject::connect(model, &M::LayerPositionChanged, [note](uint id, const QPoint& offset) {
        note("LayerPositionChanged " + Number(id) + ' ' + Text(offset));
    });
    QObject::connect(model, &M::MaskPositionChanged, [note](uint id, const QPoint& offset) {
        note("MaskPositionChanged " + Number(id) + ' ' + Text(offset));
    });
    QObject::connect(model, &M::LayerSelectedChanged,
                     [note](bool selected) { note(QString("LayerSelectedChanged %1").arg(selected)); });
    QObject::connect(model, &M::MaskSelectedChanged,
                     [note](bool selected) { note(QString("MaskSelectedChanged %1").arg(selected)); });
    QObject::connect(model, &M::LocksChanged, [note](uint id, uint flags) {
        note("LocksChanged " + Number(id) + ' ' + Number(flags));
    });
    QObject::connect(model, &M::rowsInserted,
                     [note](const QModelIndex&, int first) { note(QString("rowsInserted %1").arg(first)); });
    QObject::connect(model, &M::rowsRemoved,
                     [note](const QModelIndex&, int first) { note(QString("rowsRemoved %1").arg(first)); });
}
