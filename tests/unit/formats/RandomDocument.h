#pragma once

#include "document/LXPathElement.h"
#include "document/Layer.h"
#include "support/DocumentFixture.h"

#include <QBrush>
#include <QSet>
#include <QString>
#include <QTransform>

/// A small document of which everything is chosen by chance; the same seed gives the same one.
class RandomDocument
{
public:
    explicit RandomDocument(unsigned int seed) : m_Random(seed) {}

    DocumentFixture::OwnedDocument Make();

    /// Some of its layers' rows.
    QSet<int> Rows(const LXDocumentInterface* document);

    /// What of all there is the document has, in words; and all of these words.
    static QSet<QString> FeaturesOf(const LXDocumentInterface* document);
    static QSet<QString> AllFeatures();

private:
    int Pick(int lowest, int highest) { return DocumentFixture::Pick(m_Random, lowest, highest); }

    bool Chance() { return Pick(0, 1) == 1; }

    double Number(double least, double most);
    QString Name();

    QPoint Place() { return QPoint(Pick(-90, 90), Pick(-90, 90)); }

    QSize Size() { return QSize(Pick(1, 70), Pick(1, 60)); }

    QColor Color();
    QTransform Transform();
    QFont Font();
    QBrush Brush();
    TextContent Text();
    LXAdjustment Adjustment();
    ForeignContent Foreign();
    LayerState Layer();
    void AddMask(LayerState* layer);
    void AddMetadata(LXImage32* image);
    LXPath SubPath();

    void AddPaths(LXDocumentInterface* document);
    void AddSamples(LXDocumentInterface* document);
    void AddSelections(LXDocumentInterface* document);
    void SetProperties(LXDocumentInterface* document);

    DocumentFixture::Random m_Random;
};
