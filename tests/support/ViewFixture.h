#pragma once

#include "IDocumentView.h"

#include "document/LXDocumentFactory.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView.h"
#include "gui/ZKDocumentWidget.h"
#include "history/LexoUndoStack.h"
#include "image/LXImage.h"
#include "scripting/InputDriver.h"

#include <QColor>
#include <QItemSelectionModel>
#include <QTest>

/// A small document of one layer in a view on the screen, without a window or a plug-in around it: what a
/// single tool needs. The layer is selected.
class ViewFixture
{
public:
    explicit ViewFixture(int width = 64, int height = 48, const QColor& color = Qt::white)
        : m_pDocument(LXDocumentFactory::Instance()->Create(LXDocumentInterface::Argb32))
    {
        m_pDocument->SetDocumentSize({width, height});
        LXImage32 image(width, height);
        image.Fill(LXRGBA32i(color.rgba()));
        m_pDocument->AddLayer(QStringLiteral("Layer"), image, {});

        m_pWidget = std::make_unique<ZKDocumentWidget>(m_pDocument, &m_History);
        m_pWidget->resize(400, 300);
        m_pWidget->show();
        m_pWidget->activateWindow();
        [[maybe_unused]] const bool shown = QTest::qWaitForWindowActive(m_pWidget.get());
        SelectLayers({0});
        m_View.SetDocumentWidget(m_pWidget.get());
    }

    ~ViewFixture()
    {
        m_pWidget.reset();
        LXDocumentFactory::Instance()->Release(m_pDocument);
    }

    Q_DISABLE_COPY(ViewFixture)

    LXDocumentInterface* Document() { return m_pDocument; }

    LexoUndoStack& History() { return m_History; }

    ZKDocumentWidget* Widget() { return m_pWidget.get(); }

    ZKDocumentView* View() { return m_pWidget->GetView(); }

    /// What tools are handed.
    IDocumentView& ToolView() { return m_View; }

    InputDriver& Input() { return m_Input; }

    /// Selects the layers of these rows in the view.
    void SelectLayers(const QList<int>& rows)
    {
        QItemSelectionModel* selection = View()->GetLayerSelection();
        selection->clearSelection();
        for (const int row : rows) {
            selection->select(m_pDocument->GetModel()->index(row, 0),
                              QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
        if (!rows.isEmpty()) {
            selection->setCurrentIndex(m_pDocument->GetModel()->index(rows.first(), 0),
                                       QItemSelectionModel::NoUpdate);
        }
    }

    /// The pixel of a layer as the document keeps it, in document coordinates.
    QRgb Pixel(int x, int y, unsigned int id = 1)
    {
        const QPoint topLeft = m_pDocument->GetLayerGeometry(id).topLeft();
        return m_pDocument->GetLayerImage(id)->GetColor(x - topLeft.x(), y - topLeft.y()).value;
    }

private:
    LXDocumentInterface* m_pDocument;
    LexoUndoStack m_History;
    std::unique_ptr<ZKDocumentWidget> m_pWidget;
    IDocumentView m_View;
    InputDriver m_Input;
};
