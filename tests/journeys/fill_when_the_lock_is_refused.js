// Somebody else holds the document for a moment: a fill does nothing, in silence.

documents.create(60, 40, {background: '#ffffff'})
application.foreground = '#ff0000'
tools.activate('Fillcan')
const before = pixels.merged.checksum()

step('Click while the lock is refused')
faults.refuseLock()
input.click(10, 10)
idle()
expect.equal(history.count, 0, 'steps of the history')
expect.equal(pixels.merged.checksum(), before, 'the picture')
expect.equal(documents.active.locked, false, 'the lock')
expect.ok(application.shortcutsEnabled, 'shortcuts work')
expect.equal(application.overrideCursor, null, 'the wait cursor')

step('The second click takes the lock')
faults.refuseLock(2)
input.click(10, 10)
idle()
expect.equal(history.texts, ['Fill'])
faults.reset()
