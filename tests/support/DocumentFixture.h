#pragma once

#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"

#include <QStringList>

#include <memory>
#include <random>

class SelectionChannels;

/// Documents for tests of the editor's insides.
namespace DocumentFixture {
struct Release
{
    void operator()(LXDocumentInterface* document) const { LXDocumentFactory::Instance()->Release(document); }
};

using OwnedDocument = std::unique_ptr<LXDocumentInterface, Release>;
using Random = std::mt19937;

/// Without layers.
OwnedDocument Make(const QSize& size);

/// The selections that it keeps under names.
SelectionChannels* ChannelsOf(const LXDocumentInterface* document);

int Pick(Random& random, int lowest, int highest);
/// A rectangle that may reach `beyond` pixels outside `around` on each side, never empty.
QRect PickRect(Random& random, const QRect& around, int beyond);

/// Noise in blocks of a few pixels: opaque, transparent and soft alphas.
LXImage32 Noise(Random& random, const QSize& size);
/// The same with the colors 0, as masks and selections are.
LXImage32 MaskNoise(Random& random, const QSize& size);
LXImage32 Filled(const QSize& size, quint32 argb);

/// The pixels inside the image's edges, as one number.
quint64 Checksum(const LXImage32& image);
bool AreEqual(const LXImage32& a, const LXImage32& b);

/// Everything that undo must bring back, a line for each layer, each mask, the selection and
/// those that are kept; without the merged picture.
QStringList Describe(LXDocumentInterface* document);

/// Describe(), the resolution, the profile, the paths, color samples and guides, and the merged picture.
QStringList DescribeWhole(LXDocumentInterface* document);

/// Every signal of the document and its model, in order, as "Name arguments".
class SignalLog
{
public:
    explicit SignalLog(LXDocumentInterface* document);

    QStringList Take() { return std::exchange(*m_pLines, QStringList()); }

private:
    std::shared_ptr<QStringList> m_pLines = std::make_shared<QStringList>();
};
} // namespace DocumentFixture
