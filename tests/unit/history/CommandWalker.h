#pragma once

#include "document/LXPathElement.h"
#include "document/LayerKind.h"
#include "image/LXAdjustment.h"
#include "support/DocumentFixture.h"

#include <QTransform>

class LexoCommandData;
class LexoUndoStack;
class QItemSelectionModel;

/// Pushes random commands of every kind as the tools would: their values before are read from the document.
class CommandWalker
{
public:
    /// @param selection  the selected rows of layers, which the commands that add and remove layers follow
    CommandWalker(LXDocumentInterface* document, LexoUndoStack* stack, QItemSelectionModel* selection,
                  unsigned int seed)
        : m_pDocument(document), m_pStack(stack), m_pSelection(selection), m_Random(seed)
    {}

    void Step();

private:
    int PickRow() { return Pick(0, m_pDocument->GetModel()->rowCount() - 1); }

    unsigned int PickId() { return static_cast<unsigned int>(PickRow()) + 1; }

    /// Of a layer of the kind; 0 when there is none.
    unsigned int PickIdOf(int kind);

    int Pick(int lowest, int highest) { return DocumentFixture::Pick(m_Random, lowest, highest); }

    bool PickBool() { return Pick(0, 1) == 0; }

    QPoint PickDelta() { return {Pick(-20, 20), Pick(-20, 20)}; }

    QRect PickRect(int beyond);
    QTransform PickTransform(const QSize& box);
    LXPath PickPath();

    template <class Command>
    void Push(LexoCommandData* data);

    void PaintLayer();
    void PaintMask();
    template <class Command, class Data>
    void PaintOn(unsigned int id, const QRect& before, LXImage32* image, bool isMask);
    void SelectPath();
    void SelectMask();
    void MoveSelection();
    void MoveLayers();
    void CreateLayer();
    void RemoveLayer();
    void ChangeLayer();
    void ChangeLayerProperty();
    void PushMacro();

    void WorkOnText();
    void AddText();
    void ChangeText(unsigned int id);
    void SetSomeOfText(unsigned int id);
    void WorkOnAdjustment();
    LXAdjustment PickAdjustment();

    void TransformLayer();
    void TransformSelection();
    void ChangeCanvas();
    void ChangeImageSize();
    void ChangePath();
    void ChangeSubPath(int row);
    void ChangeSample();
    void ChangeGuides();
    void ChangeChannels();
    void ChangeProfile();

    LXDocumentInterface* m_pDocument;
    LexoUndoStack* m_pStack;
    QItemSelectionModel* m_pSelection;
    DocumentFixture::Random m_Random;
};
