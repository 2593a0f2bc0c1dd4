// A fill fails for a reason that nobody can foresee. The person reads why, nothing has changed, and the next one works.

const failure = {title: 'Operation error', text: /Cannot fill/, answer: 'Close'}

function failOnce(what, arm) {
    step('A fill fails: ' + what)
    const before = pixels.merged.checksum()
    reports.clear()
    arm()
    dialogs.expect(failure)
    input.click(10, 10)
    idle()
    expect.equal(dialogs.waiting, 0, 'the message')
    expect.equal(history.count, 0, 'steps of the history')
    expect.equal(pixels.merged.checksum(), before, 'the picture')
    expect.contains(reports.lines.join('\n'), 'file="src/fillcan/FillCan_p"', 'the log')
    expect.equal(documents.active.locked, false, 'the lock')
    expect.ok(application.shortcutsEnabled, 'shortcuts work')
    expect.equal(application.overrideCursor, null, 'the wait cursor')
}

documents.create(60, 40, {background: '#ffffff'})
application.foreground = '#ff0000'
tools.activate('Fillcan')

failOnce('the search breaks off', () => faults.failFill())
failOnce('there is no memory', () => faults.failTile())

step('The next fill works')
input.click(10, 10)
idle()
expect.equal(history.texts, ['Fill'])
expect.equal(pixels.merged.pixel(10, 10), '#ffff0000')
