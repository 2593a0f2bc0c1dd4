#pragma once

#include <QAbstractListModel>
#include <QPointer>
#include <QVector>

class LexoUndoStack;

/// The states that a history can go to, oldest first: the one before all steps, then the one after each
/// step. A step that still stands open is the last one. Main thread only.
class HistoryModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role
    {
        IsDoneRole = Qt::UserRole, ///< bool; false behind the current state
        IsCleanRole,               ///< bool; the state that is on the disk
    };

    using QAbstractListModel::QAbstractListModel;

    /// Null empties the list.
    void SetHistory(LexoUndoStack* history);

    LexoUndoStack* GetHistory() const;

    /// The row of the state that the document is in; -1 without a history.
    int GetCurrentRow() const { return m_CurrentRow; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;

signals:
    /// Before the first row changes.
    void AboutToUpdate();
    /// After all rows are as the history is.
    void Updated();

private:
    struct State
    {
        QString text;
        bool isDone = false;
        bool isClean = false;
    };

    QVector<State> ReadStates() const;
    void Update();

    QPointer<LexoUndoStack> m_pHistory;
    QVector<State> m_States;
    int m_CurrentRow = -1;
};
