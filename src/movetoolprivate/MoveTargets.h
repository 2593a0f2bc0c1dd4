#pragma once

#include <QList>
#include <QMap>
#include <QPoint>
#include <QRect>
#include <QTransform>

#include <memory>

class LXDocumentInterface;
class LXDocumentModel;
class LexoCommand;

/// The layers and masks that a drag moves by their offsets, and where they stood at the press.
/// Main thread only.
class MoveTargets
{
public:
    void Clear();

    /// Takes in what moves with these rows: the layer and its linked mask, or the mask, where that is
    /// selected, and its linked layer. A row that locks keep in its place ends the list; no mask moves then.
    void Collect(const LXDocumentModel& model, const QList<int>& rows);

    /// Around all of it at the press, in document pixels; empty for nothing.
    QRect GetRect() const { return m_Rect; }

    QList<uint> LayerIds() const;

    /// Puts everything this far from where it stood at the press.
    void MoveBy(LXDocumentInterface* document, const QPoint& delta) const;

    /// The command, without its text, of a move that has happened already.
    std::unique_ptr<LexoCommand> MakeCommand(LXDocumentInterface* document, const QPoint& delta) const;

private:
    void AddLayer(const LXDocumentModel& model, int row);
    void AddMask(const LXDocumentModel& model, int row);

    /// A layer at the press.
    struct Place
    {
        QPoint offset;
        QTransform text; ///< what the letters of a text layer go through
    };

    QMap<unsigned int, Place> m_Layers; ///< by rows
    QMap<unsigned int, QPoint> m_Masks;
    QRect m_Rect;
};
