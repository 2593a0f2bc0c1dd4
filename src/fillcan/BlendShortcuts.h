#pragma once

#include <QKeySequence>
#include <QPointer>

#include <array>

class LXShortcut;
class QWidget;

/// The keys that choose a blend mode while a fill tool is active. Main thread only.
class BlendShortcuts
{
public:
    BlendShortcuts() = default;
    ~BlendShortcuts();

    Q_DISABLE_COPY(BlendShortcuts)

    /// Registers the keys.
    /// @param window  where they act; it owns the shortcuts.
    void Create(QWidget* window);

    /// Makes the keys dead; harmless when there are none.
    void Delete();

    /// The row of BlendModeTable that the key chooses; -1 for any other key.
    /// @param current  the row chosen now, for the keys that step on and back; they wrap round.
    static int IndexFor(const QKeySequence& key, int current);

private:
    /// All rows but the last, "Addition", which has no key.
    static constexpr int DirectCount = 12;

    static QKeySequence DirectKey(int index);

    QPointer<LXShortcut> m_pPrevBlendShortcut;
    QPointer<LXShortcut> m_pNextBlendShortcut;
    std::array<QPointer<LXShortcut>, DirectCount> m_BlendShortcuts;
};
