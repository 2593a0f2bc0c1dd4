#pragma once

class QGraphicsScene;

/// The path items for WidgetGallery::OnGrounds(), one on each ground, with the outline that a view would
/// draw.
namespace PathSamples {
/// Under edit, with a current anchor.
void AddEditors(QGraphicsScene& scene);
/// Being drawn, with the newest anchor current and one more under the pointer.
void AddCreators(QGraphicsScene& scene);
} // namespace PathSamples
