// Another program has put a picture on the clipboard, as a PNG file. The editor sees its pixels.

step('Nothing is there at first')
application.clearClipboard()
expect.equal(application.clipboardImage, null)

step('Another program copies')
faults.putForeignImage(7, 5, '#336699')
expect.equal(application.clipboardImage.width, 7)
expect.equal(application.clipboardImage.height, 5)

step('Its pixels')
const path = application.dataFolder + '/clip.png'
application.saveClipboardImage(path)
const picture = pixels.file(path)
expect.equal(picture.region(0, 0, 7, 5), Array(35).fill('#ff336699'))
