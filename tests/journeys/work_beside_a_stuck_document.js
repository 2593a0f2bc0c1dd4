// A lock does not come off. That document stays closed to changes, but everything else goes on.

application.foreground = '#ff0000'
const stuck = documents.create(60, 40, {background: '#ffffff'})
tools.activate('Fillcan')

step('The fill ends, its lock stays')
faults.refuseUnlock()
input.click(10, 10)
expect.throws(() => idle(2000), 'a document is locked')
expect.ok(stuck.locked, 'the lock')
expect.equal(history.texts, ['Fill'])
expect.ok(application.shortcutsEnabled, 'shortcuts work')
expect.equal(application.overrideCursor, null, 'the wait cursor')

step('Another document can be filled')
documents.create(60, 40, {background: '#ffffff'})
input.click(10, 10)
while (history.count === 0) wait(20) // idle() would wait for the stuck one too
expect.equal(history.texts, ['Fill'])
expect.equal(pixels.merged.pixel(10, 10), '#ffff0000')

step('The stuck document can go')
stuck.activate()
faults.closeDocument()
idle()
expect.equal(documents.count, 1)
