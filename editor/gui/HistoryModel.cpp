#include "gui/HistoryModel.h"

#include "history/LexoUndoStack.h"

void HistoryModel::SetHistory(LexoUndoStack* history)
{
    if (m_pHistory) m_pHistory->disconnect(this);
    m_pHistory = history;
    if (m_pHistory) {
        connect(m_pHistory, &LexoUndoStack::historyChanged, this, &HistoryModel::Update);
        connect(m_pHistory, &QObject::destroyed, this, &HistoryModel::Update);
    }
    Update();
}

LexoUndoStack* HistoryModel::GetHistory() const
{
    return m_pHistory;
}

int HistoryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_States.size();
}

QVariant HistoryModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_States.size()) return QVariant();

    const State& state = m_States[index.row()];
    switch (role) {
    case Qt::DisplayRole: return state.text;
    case Qt::ToolTipRole:
        if (state.isClean) return tr("%1: as it is on the disk").arg(state.text);
        return state.isDone ? state.text : tr("%1: undone").arg(state.text);
    case Qt::AccessibleTextRole: return data(index, Qt::ToolTipRole);
    case IsDoneRole: return state.isDone;
    case IsCleanRole: return state.isClean;
    default: return QVariant();
    }
}

QVector<HistoryModel::State> HistoryModel::ReadStates() const
{
    QVector<State> states;
    if (!m_pHistory) return states;

    const int current = m_pHistory->index();
    const int clean = m_pHistory->cleanIndex();
    states.append({m_pHistory->hasForgotten() ? tr("Earlier steps") : tr("Start"), true, clean == 0});
    for (int step = 0; step < current; ++step)
        states.append({m_pHistory->text(step), true, clean == step + 1});
    if (m_pHistory->isDelayedOpen()) {
        // It takes the place of what was undone.
        states.append({m_pHistory->undoText(), true, false});
        return states;
    }
    for (int step = current; step < m_pHistory->count(); ++step)
        states.append({m_pHistory->text(step), false, clean == step + 1});
    return states;
}

void HistoryModel::Update()
{
    emit AboutToUpdate();
    const QVector<State> states = ReadStates();
    const int before = m_States.size();
    // Rows come and go at the end alone, so that the list keeps its place.
    if (states.size() < before) {
        beginRemoveRows(QModelIndex(), states.size(), before - 1);
        m_States = states;
        endRemoveRows();
    } else if (states.size() > before) {
        beginInsertRows(QModelIndex(), before, states.size() - 1);
        m_States = states;
        endInsertRows();
    } else {
        m_States = states;
    }
    if (!m_States.isEmpty()) emit dataChanged(index(0), index(m_States.size() - 1));

    const bool isOpen = m_pHistory && m_pHistory->isDelayedOpen();
    m_CurrentRow = m_pHistory ? m_pHistory->index() + (isOpen ? 1 : 0) : -1;
    emit Updated();
}
