// What journeys of the clipboard do.

/// The rows of the panel, a list of texts each: name and size, time and bytes, format and what happened.
function clipboardRows() {
    return widgets.find("ClipboardPanel/m_pList").items.map(row => row.split("\t"))
}

/// Presses the key, and waits until its copy has come.
function copyWith(key) {
    input.key(key)
    idle()
}
