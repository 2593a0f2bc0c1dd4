// A view may stand without a history. A fill paints then all the same; there is only nothing to undo.

const document = documents.create(60, 40, {background: '#ffffff'})
application.foreground = '#ff0000'
tools.activate('Fillcan')

step('Fill while the view has no history')
faults.takeHistory()
input.click(10, 10)
idle()
expect.equal(pixels.merged.pixel(10, 10), '#ffff0000', 'the picture')
expect.equal(document.locked, false, 'the lock')

step('With the history back, the fill before it is no step')
faults.giveHistory()
expect.equal(history.count, 0, 'steps')
application.foreground = '#0000ff'
input.click(10, 10)
idle()
expect.equal(history.texts, ['Fill'])
history.undo()
expect.equal(pixels.merged.pixel(10, 10), '#ffff0000', 'undone to the fill without a history')
