#pragma once

#include "ZKHostExport.h"

#include <QAbstractItemModel>
#include <QColor>
#include <QPoint>

#include <memory>

class LXColorSampleModelPrivate;
class LXDocumentInterface;

/// The color samples of a document as a list of one column: numbered points whose color is read from the
/// merged picture and follows it. Main thread; signals too. Nothing here can be undone; commands can.
///
/// `Qt::DisplayRole` gives the place and the color in words, `Qt::DecorationRole` the color.
/// Getters answer an empty value and setters do nothing for a bad row.
class ZK_HOST_EXPORT LXColorSampleModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    /// How the color is written.
    enum SampleFormat
    {
        RGB = 0, ///< 0 to 255 each
        CMYK = 1 ///< percents, without color management
    };

    static constexpr int MaxSampleRadius = 3;

    ~LXColorSampleModel() override;

    /// The document that the samples belong to.
    LXDocumentInterface* GetDocument() const;

    /// The mean around the point, weighted by alpha; an invalid color outside the canvas.
    QColor GetColor(int row) const;
    /// Document pixels.
    QPoint GetPoint(int row) const;
    void SetPoint(int row, const QPoint& point);
    /// 0 to MaxSampleRadius: the color is the mean of a square of 2 x radius + 1 pixels a side.
    int GetSampleRadius(int row) const;
    /// Values outside are clamped.
    void SetSampleRadius(int row, int radius);
    SampleFormat GetDisplayFormat(int row) const;
    void SetDisplayFormat(int row, SampleFormat format);
    /// "R 255  G 128  B 0" or "C 0 %  M 50 %  Y 100 %  K 0 %"; a dash outside the canvas.
    QString GetColorText(int row) const;

    /// Adds a sample with the radius and the format of the last one; a row beyond the last means the end.
    void InsertSample(int row, const QPoint& point);
    void RemoveSample(int row);

    using QObject::parent;
    QModelIndex index(int row, int column = 0, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

signals:
    void SampleInserted(int row);
    void SampleRemoved(int row);
    void SamplePosChanged(int row);
    /// The color or the way it is written may be another one.
    void SampleColorChanged(int row);

private:
    friend class LXColorSampleModelPrivate;
    explicit LXColorSampleModel(LXDocumentInterface* document);

    std::unique_ptr<LXColorSampleModelPrivate> m_pPrivate;
};
