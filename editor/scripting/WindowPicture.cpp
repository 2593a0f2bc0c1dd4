#include "scripting/WindowPicture.h"

#include <QApplication>
#include <QLabel>
#include <QPainter>
#include <QStringList>
#include <QTextDocumentFragment>
#include <QWidget>

QPixmap WindowPicture::OfScreen(QWidget* window)
{
    QPixmap picture = window->grab();
    QPainter painter(&picture);
    // In the order of making, which for dialogs and menus is that of lying over each other.
    for (QWidget* other : QApplication::topLevelWidgets()) {
        if (other == window || !other->isVisible()) continue;
        painter.drawPixmap(other->mapToGlobal(QPoint()) - window->mapToGlobal(QPoint()), other->grab());
    }
    return picture;
}

QString WindowPicture::WordsOf(const QWidget* window)
{
    QStringList words;
    for (const QLabel* label : window->findChildren<QLabel*>()) {
        const QString text = QTextDocumentFragment::fromHtml(label->text()).toPlainText().simplified();
        if (!text.isEmpty() && label->isVisibleTo(window)) words << text;
    }
    if (words.isEmpty()) return window->windowTitle();
    return window->windowTitle() + QStringLiteral(": ") + words.join(' ');
}
