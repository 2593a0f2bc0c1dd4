#pragma once

#include "ZKHostExport.h"

#include <QBrush>
#include <QPixmap>
#include <QWidget>

class QListWidget;

/// A pop-up list of patterns. Main thread only.
class ZK_HOST_EXPORT PatternSelectWidget : public QWidget
{
    Q_OBJECT

public:
    explicit PatternSelectWidget(QWidget* parent = nullptr);
    ~PatternSelectWidget() override;

    /// Appends a pattern. A file that isn't a picture keeps its place, with an empty image.
    void AddItem(const QString& file, const QString& label);
    int GetItemCount() const;

    /// Makes the item the current one; a bad index is ignored.
    void SelectItem(int index);
    /// -1 for none.
    int GetCurrentItem() const;

    /// The picture of the pattern in its own size; null for a bad index.
    QPixmap GetItemImage(int index) const;
    /// A texture brush of the current pattern; an empty brush without one.
    QBrush GetPattern() const;

    QSize sizeHint() const override;

signals:
    void CurrentItemChanged(int index);
    /// By a double click, or Enter on the current item.
    void ItemDoubleClicked(int index);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QListWidget* m_pList;
    QList<QPixmap> m_Images;
};
