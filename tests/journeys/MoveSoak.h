#pragma once

#include "support/DocumentFixture.h"
#include "support/EditorFixture.h"

#include <QMap>
#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

class LXMdiSubWindow;

/// Uses the move tool at random on two documents, with real mouse and keys, and looks after each act whether
/// everything is as it must be. What opens is closed. The same seed does the same.
class MoveSoak : public QObject
{
    Q_OBJECT

public:
    explicit MoveSoak(unsigned int seed);
    ~MoveSoak() override;

    /// One act: what it was, in words.
    QString Act();

    /// What is wrong now; empty when nothing is.
    QString Fault() const;

    /// Whether a history is about to forget its oldest steps.
    bool IsHistoryFull() const;

    /// Lets go of everything, undoes both documents to their start and redoes them to the end; the next acts
    /// go on from the start. What isn't as it was; empty when all is.
    QString UndoEverything();

    /// How many steps were undone so.
    int CountSteps() const { return m_Steps; }

    /// How often something was seen to float.
    int CountFloats() const { return m_Floats; }

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    struct Picture
    {
        LXMdiSubWindow* window = nullptr;
        ZKDocumentView* view = nullptr;
        LXDocumentInterface* document = nullptr;
        LexoUndoStack* history = nullptr;
        QStringList start;
    };

    void AddPicture(const QSize& size);
    void LeaveMenus();
    QString ActPressed();
    QString Press();
    QString ClickTwice();
    QString PanWithTheMoveKey();
    QString NudgeByKey();
    QString ChangeTool();
    QString StepThroughHistory();
    QString ChangeRows();
    QString ChangeMaskTarget();
    QString SelectRectangle();
    QString ChangeView();
    QPointF PickPoint();
    QString FaultOf(const Picture& picture) const;
    QString FaultAtRest() const;
    const Picture& Current() const;

    int Pick(int lowest, int highest) { return DocumentFixture::Pick(m_Random, lowest, highest); }

    EditorFixture m_Editor;
    DocumentFixture::Random m_Random;
    std::vector<Picture> m_Pictures;
    bool m_bPressed = false;
    mutable int m_Floats = 0;
    int m_Steps = 0;
};
