#include "history/SelectedRows.h"

#include <QItemSelectionModel>

#include <algorithm>

SelectedRows::SelectedRows(QItemSelectionModel* selection) : m_pSelection(selection) {}

void SelectedRows::Remember()
{
    m_Rows.clear();
    if (!m_pSelection) return;
    for (const QModelIndex& index : m_pSelection->selectedRows()) {
        m_Rows << index.row();
    }
}

void SelectedRows::Restore() const
{
    if (!m_pSelection || !m_pSelection->model()) return;
    QItemSelection rows;
    for (const int row : m_Rows) {
        const QModelIndex index = m_pSelection->model()->index(row, 0);
        rows.select(index, index);
    }
    m_pSelection->select(rows, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    if (!m_Rows.isEmpty()) {
        m_pSelection->setCurrentIndex(m_pSelection->model()->index(m_Rows.last(), 0),
                                      QItemSelectionModel::NoUpdate);
    }
}

void SelectedRows::SelectOnly(int row) const
{
    if (!m_pSelection || !m_pSelection->model()) return;
    const int last = m_pSelection->model()->rowCount() - 1;
    if (last < 0) return;
    m_pSelection->setCurrentIndex(m_pSelection->model()->index(std::min(row, last), 0),
                                  QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}
