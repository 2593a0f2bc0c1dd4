// Files that only look like pictures: each is refused in words, and the open document is as it was.

const mine = documents.create(60, 40, {background: '#00ff00'})
const before = pixels.merged.checksum()

function expectUntouched() {
    expect.equal(documents.count, 1, 'documents')
    expect.ok(mine.isActive, 'the document is still in front')
    expect.equal(pixels.merged.checksum(), before, 'the picture')
    expect.equal(history.count, 0, 'steps')
}

for (const name of ['story.png', 'half.png', 'huge.png']) {
    const path = script.folder + '/files/' + name

    step('Open ' + name + ' from the menu')
    const told = {title: /./, text: new RegExp(name.replace('.', '\\.')), answer: 'Close'}
    dialogs.expectFile(path)
    dialogs.expect(told)
    menus.trigger('File/Open…')
    idle()
    expect.equal(dialogs.waiting, 0, 'the person was asked, and told')
    expectUntouched()

    step('Open ' + name + ' from a script')
    dialogs.expect(told)
    expect.throws(() => documents.open(path), name)
    expectUntouched()
}

step('Open a file that is not there')
expect.throws(() => documents.open(script.folder + '/files/missing.png'), 'missing.png')
expectUntouched()

step('The document can still be worked on')
application.foreground = '#0000ff'
tools.activate('Fillcan')
input.click(5, 5)
idle()
expect.equal(history.texts, ['Fill'])
