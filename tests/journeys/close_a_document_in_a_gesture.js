// A document goes away while a tool works on it: the tool lets go, and the other document is as usable as before.

const left = documents.create(60, 40, {background: '#ffffff'})
application.foreground = '#ff0000'
tools.activate('Fillcan')

step('Close while a slow fill runs')
const doomed = documents.create(80, 50, {background: '#ffffff'})
faults.slowDown('fill', 300)
input.click(10, 10)
expect.ok(doomed.locked, 'the fill runs')
faults.closeDocument()
idle()
expect.equal(doomed.isOpen, false, 'the closed document')
expect.equal(documents.count, 1)
expect.ok(application.shortcutsEnabled, 'shortcuts work')
expect.equal(application.overrideCursor, null, 'the wait cursor')

step('Close between press and release')
faults.reset()
faults.slowDown('fill', 0)
documents.create(80, 50, {background: '#ffffff'})
input.press(10, 10)
faults.closeDocument()
idle()
input.release(10, 10)
idle()
expect.equal(documents.count, 1)

step('Fill in the document that is left')
left.activate()
const stepsBefore = history.count
input.click(20, 20)
idle()
expect.equal(history.count, stepsBefore + 1, 'steps')
expect.equal(pixels.merged.pixel(20, 20), '#ffff0000')
