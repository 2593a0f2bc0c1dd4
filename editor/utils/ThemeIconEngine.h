#pragma once

#include <QIconEngine>
#include <QString>

/// Draws an icon from the theme's pictures of the moment, so that icons that exist already change with the
/// look. Takes the smallest picture that has enough pixels, in whatever size and ratio it comes, and shrinks
/// it; nothing is ever blown up. Main thread only.
class ThemeIconEngine : public QIconEngine
{
public:
    /// @param name  "theme:x.png"
    explicit ThemeIconEngine(QString name);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) const override;
    QIconEngine* clone() const override;

private:
    QString m_Name;
};
