#pragma once

#include <QJSValue>

class QCursor;
class QJSEngine;

/// Cursors as scripts read them. Main thread only.
namespace CursorWords {
/// `{shape}` for one of Qt's, such as "Cross" or "Forbidden"; `{theme, x, y}` for a picture of the theme with
/// its hot spot; `{shape: "Bitmap", x, y}` for any other picture.
QJSValue ToValue(QJSEngine& engine, const QCursor& cursor);
} // namespace CursorWords
