// The disk is full: the person is told, the old file and the unsaved change stay, and a second try works.

const document = documents.create(200, 100, {background: '#ffffff'})
const path = application.dataFolder + '/kept.png'

step('Save once')
expect.ok(document.save(path))
expect.equal(document.modified, false)

step('Save a change on a full disk')
application.foreground = '#ff0000'
tools.activate('Fillcan')
input.click(10, 10)
idle()
expect.ok(document.modified)
faults.failWrite()
dialogs.expect({title: /./, text: /kept\.png/, answer: 'Close'})
expect.throws(() => { if (!document.save()) throw Error('not saved') })
expect.ok(document.modified, 'the change is still to be saved')
expect.equal(pixels.file(path).pixel(10, 10), '#ffffffff', 'the old file')

step('Save again')
expect.ok(document.save())
expect.equal(document.modified, false)
expect.equal(pixels.file(path).pixel(10, 10), '#ffff0000', 'the new file')
