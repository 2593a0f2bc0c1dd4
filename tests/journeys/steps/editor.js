// What many journeys do.

/// A file in the private folder of this run, which goes with it.
function fileNamed(name) { return application.dataFolder + "/" + name }

/// A click that paints, and the end of its work.
function paint(x, y, options) {
    input.click(x, y, options)
    idle()
}

function undo() { input.key("Ctrl+Z"); idle() }

function redo() { input.key("Ctrl+Shift+Z"); idle() }

/// Undoes and redoes the last step; `look` gives what a person sees of it.
function checkStep(look, before, after) {
    expect.equal(look(), after, "after the step")
    undo()
    expect.equal(look(), before, "after undo")
    redo()
    expect.equal(look(), after, "after redo")
}

/// A control of the chosen tool's option bar.
function option(name) { return widgets.find("optionBar/" + name) }

/// Clicks into a row of the list of layers: its eye, its picture, its mask's picture or its name.
function clickRow(row, place) {
    const list = widgets.find("LayersWidget/m_pList")
    const rect = list.itemGeometry(row)
    const x = rect.x + { eye: 16, picture: 50, mask: 94, name: 180 }[place]
    input.click(x, rect.y + rect.height / 2, { in: list })
    idle()
}

/// What must hold between a person's acts.
function checkAtRest() {
    idle()
    expect.equal(documents.active === null || !documents.active.locked, true, "no lock is left")
    expect.equal(application.shortcutsEnabled, true, "shortcuts are on")
    expect.equal(application.overrideCursor, null, "no cursor is left")
    expect.equal(dialogs.waiting, 0, "every expected window has come")
}
