#pragma once

#include "IDocumentView.h"
#include "LXViewToolBase.h"

#include <QStringList>

/// A view tool that writes down what happens to it.
class RecordingTool : public LXViewToolBase
{
public:
    explicit RecordingTool(bool filterAlways = false) : LXViewToolBase(nullptr, filterAlways)
    {
        connect(this, &LXViewToolBase::OnActivate, this,
                [this](bool active) { Note(active ? "activated" : "deactivated"); });
        connect(this, &LXViewToolBase::OnDocumentViewChange, this, [this] { Note("view will change"); });
        connect(this, &LXViewToolBase::OnDocumentViewChanged, this, [this] { Note("view changed"); });
        connect(this, &LXViewToolBase::Enter, this, [this] { Note("Enter"); });
        connect(this, &LXViewToolBase::Leave, this, [this] { Note("Leave"); });
        connect(this, &LXViewToolBase::FocusIn, this, [this] { Note("FocusIn"); });
        connect(this, &LXViewToolBase::FocusOut, this, [this] { Note("FocusOut"); });
        connect(this, &LXViewToolBase::CurrentDocumentLocked, this,
                [this](bool locked) { Note(locked ? "document locked" : "document unlocked"); });
        connect(this, &LXViewToolBase::PanningEnabled, this,
                [this](bool enabled) { Note(enabled ? "panning" : "no panning"); });
        connect(this, qOverload<QPointF, Qt::MouseButtons>(&LXViewToolBase::OnMousePress), this,
                [this](QPointF, Qt::MouseButtons buttons) { Note(QString("press of %1").arg(buttons)); });
        connect(this, qOverload<QPointF, Qt::MouseButton>(&LXViewToolBase::OnMousePress), this,
                [this](QPointF, Qt::MouseButton button) { Note(QString("press, changed %1").arg(button)); });
        connect(this, &LXViewToolBase::OnMouseMove, this,
                [this](QPointF, Qt::MouseButtons) { Note("move"); });
        connect(this, qOverload<QPointF, Qt::MouseButtons>(&LXViewToolBase::OnMouseRelease), this,
                [this](QPointF, Qt::MouseButtons buttons) { Note(QString("release of %1").arg(buttons)); });
        connect(
            this, qOverload<QPointF, Qt::MouseButton>(&LXViewToolBase::OnMouseRelease), this,
            [this](QPointF, Qt::MouseButton button) { Note(QString("release, changed %1").arg(button)); });
    }

    /// What happened since the last call.
    QStringList TakeNotes()
    {
        QStringList notes;
        notes.swap(m_Notes);
        return notes;
    }

    bool allowDeactivate = true;
    QCursor cursor = Qt::CrossCursor;

    void SaveSettings() override { Note("SaveSettings"); }

    void LoadSettings() override { Note("LoadSettings"); }

protected:
    void OnEnter(QEvent* event) override { Note(event ? "OnEnter" : "OnEnter without an event"); }

    void OnLeave(QEvent* event) override { Note(event ? "OnLeave" : "OnLeave without an event"); }

    void OnSceneMouseDoubleClick(QGraphicsSceneMouseEvent*) override { Note("double click"); }

    int GetToolBoxPosition() override { return -1; }

    void CreateToolBar() override { Note("CreateToolBar"); }

    void CreateToolBoxButton() override { Note("CreateToolBoxButton"); }

    void CreateToolWidget() override { Note("CreateToolWidget"); }

    void UpdateToolUi(bool checked) override
    {
        Note(checked ? "show interface" : "hide interface");
        LXViewToolBase::UpdateToolUi(checked);
    }

    QCursor GetCursor() override { return cursor; }

    bool AllowDeactivate() override
    {
        Note("may deactivate?");
        return allowDeactivate;
    }

private:
    void Note(const QString& note) { m_Notes.append(note); }

    QStringList m_Notes;
};
