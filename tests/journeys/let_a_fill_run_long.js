// A fill that takes long holds the document while its progress shows, and lets go of everything at its end.

const document = documents.create(60, 40, {background: '#ffffff'})
application.foreground = '#ff0000'
tools.activate('Fillcan')

step('A fill that takes longer than anybody waits without a sign')
faults.slowDown('fill', 1500)
input.click(10, 10)
expect.ok(document.locked, 'the document is locked')
expect.equal(application.shortcutsEnabled, false, 'shortcuts')
expect.notEqual(application.overrideCursor, null, 'the wait cursor')
expect.equal(history.count, 0, 'nothing is filled yet')

step('Undo and save while it runs')
input.key('Ctrl+Z')
input.key('Ctrl+S')
expect.ok(document.locked, 'the fill still runs')

step('The end of the fill')
idle()
expect.equal(widgets.modal, null, 'the progress window')
expect.equal(history.texts, ['Fill'])
expect.equal(pixels.merged.pixel(10, 10), '#ffff0000')
expect.equal(document.locked, false, 'the lock')
expect.ok(application.shortcutsEnabled, 'shortcuts work')
expect.equal(application.overrideCursor, null, 'the wait cursor')
