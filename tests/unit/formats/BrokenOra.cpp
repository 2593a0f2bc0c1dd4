#include "BrokenOra.h"

#include "support/FileBytes.h"

#include <QSet>
#include <QtEndian>

#include <functional>

using BrokenOra::File;
using FileBytes::PngSpec;
using ZipBytes::Entry;

namespace {
const QByteArray Layer = R"(<layer name="one" src="data/layer0.png" x="0" y="0"/>)";

QByteArray Png(const QSize& size, PngSpec::ColorType type = PngSpec::Rgba)
{
    return FileBytes::Png({size, 8, type, false, {}}, [](int x, int y, int channel) {
        return (x * 31 + y * 17 + channel * 101 + x * y) & 0xFF;
    });
}

/// A right header that claims the size, with hardly any pixels behind it.
QByteArray ClaimingPng(const QSize& size)
{
    using namespace FileBytes;
    return PngSignature() + PngHeader({size, 8, PngSpec::Rgba, false, {}}) +
           PngChunk("IDAT", qCompress(QByteArray(1000, '\0')).mid(4)) + PngChunk("IEND", {});
}

Entry& Named(QVector<Entry>& entries, const char* name)
{
    for (Entry& entry : entries) {
        if (entry.name == QLatin1String(name)) return entry;
    }
    qFatal("no such entry");
}

/// The good file after a change of its entries.
QByteArray Changed(const std::function<void(QVector<Entry>&)>& change)
{
    QVector<Entry> entries = BrokenOra::GoodEntries();
    change(entries);
    return ZipBytes::Write(entries).bytes;
}

QByteArray WithEntry(const Entry& entry)
{
    return Changed([&entry](QVector<Entry>& entries) { entries.append(entry); });
}

QByteArray WithLayerBytes(const QByteArray& bytes)
{
    return Changed([&bytes](QVector<Entry>& entries) { Named(entries, "data/layer0.png").bytes = bytes; });
}

template <typename Number>
QByteArray WithNumber(QByteArray bytes, int at, Number number)
{
    qToLittleEndian(number, bytes.data() + at);
    return bytes;
}

void AddCutFiles(QVector<File>& files)
{
    const ZipBytes::Archive archive = ZipBytes::Write(BrokenOra::GoodEntries());
    QSet<int> lengths;
    for (const int boundary : archive.boundaries) {
        lengths << boundary - 1 << boundary << boundary + 1;
    }
    for (int length = archive.endAt; length < archive.bytes.size(); ++length) {
        lengths << length;
    }
    for (const int length : lengths) {
        if (length < 0 || length >= archive.bytes.size()) continue;
        files.append({"cut off after " + QByteArray::number(length), archive.bytes.left(length)});
    }
}

/// Of the parts that are read; the pictures for other programs aren't.
void AddWrongDirectories(QVector<File>& files)
{
    for (const char* name : {"mimetype", "stack.xml", "data/layer0.png", "data/mask0.png", "data/profile.icc",
                             "data/notes.bin"}) {
        const auto add = [&files, name](const char* what, const std::function<void(Entry&)>& change) {
            files.append({QByteArray(name) + ": " + what,
                          Changed([&](QVector<Entry>& entries) { change(Named(entries, name)); })});
        };
        add("one byte too long", [](Entry& entry) { entry.claimedSize = entry.bytes.size() + 1; });
        add("one byte too short", [](Entry& entry) { entry.claimedSize = entry.bytes.size() - 1; });
        add("two gigabytes long", [](Entry& entry) { entry.claimedSize = 0x7FFFFFFF; });
        add("packed too short", [](Entry& entry) { entry.claimedPackedSize = 5; });
        add("wrong check sum", [](Entry& entry) { entry.claimedSum = 12345; });
        add("in another place", [](Entry& entry) { entry.claimedOffset = 3; });
        add("behind the file's end", [](Entry& entry) { entry.claimedOffset = 0x7FFFFFF0; });
    }
}

void AddWrongEnds(QVector<File>& files)
{
    const ZipBytes::Archive archive = ZipBytes::Write(BrokenOra::GoodEntries());
    const auto with16 = [&archive](int at, quint16 number) {
        return WithNumber(archive.bytes, archive.endAt + at, number);
    };
    const auto with32 = [&archive](int at, quint32 number) {
        return WithNumber(archive.bytes, archive.endAt + at, number);
    };
    files.append(
        {"claims sixty thousand parts", WithNumber(with16(8, 60000), archive.endAt + 10, quint16(60000))});
    files.append({"claims as many parts as numbers go",
                  WithNumber(with16(8, 0xFFFF), archive.endAt + 10, quint16(0xFFFF))});
    files.append({"claims one part more", WithNumber(with16(8, 9), archive.endAt + 10, quint16(9))});
    files.append({"directory of four gigabytes", with32(12, 0xFFFFFFF0)});
    files.append({"directory longer than the file", with32(12, 500000)});
    files.append({"directory behind the file's end", with32(16, 0x7FFFFFF0)});
    files.append({"directory in the middle of a part", with32(16, 50)});
    files.append({"nothing but an end", archive.bytes.mid(archive.endAt)});
    files.append({"no parts", ZipBytes::Write({}).bytes});
    files.append({"noise behind the mark", "PK\3\4" + QByteArray(5000, 'z')});
    files.append({"encrypted", WithNumber(archive.bytes, archive.directoryAt + 8, quint16(1))});
    files.append({"unknown method", WithNumber(archive.bytes, archive.directoryAt + 10, quint16(97))});
}

void AddWrongNames(QVector<File>& files)
{
    for (const char* name : {"../evil.txt", "data/../../evil.txt", "data/..", "..", "/tmp/zk-evil.txt",
                             "C:/evil.txt", "data\\..\\evil.txt", "data/e\nvil.txt", "\x7F"}) {
        files.append({QByteArray("part named ") + name, WithEntry({name, "evil"})});
    }
    files.append({"part without a name", WithEntry({"", "evil"})});
    files.append({"two parts of one name", WithEntry({"stack.xml", "<image/>"})});
    files.append({"two layers of one name", WithEntry({"data/layer0.png", Png(QSize(3, 3))})});
}

void AddWrongTypes(QVector<File>& files)
{
    const auto withType = [](const QByteArray& type) {
        return Changed([&type](QVector<Entry>& entries) { Named(entries, "mimetype").bytes = type; });
    };
    files.append({"another program's type", withType("application/x-other")});
    files.append({"empty type", withType("")});
    files.append({"type of a megabyte", withType(QByteArray(1 << 20, 'a'))});
    files.append({"no list of layers", ZipBytes::Write({{"mimetype", "image/openraster"}}).bytes});
}

void AddBombs(QVector<File>& files)
{
    const QByteArray zeros(64 << 20, '\0');
    files.append({"part of a thousand times its size", WithEntry({"bomb.bin", zeros, true})});
    files.append({"list of a thousand times its size", Changed([&zeros](QVector<Entry>& entries) {
                      Named(entries, "stack.xml").bytes = QByteArray(zeros.size(), ' ');
                  })});
    files.append({"twelve gigabytes altogether", Changed([](QVector<Entry>& entries) {
                      for (const char* name : {"a", "b", "c"}) {
                          Entry large{name, QByteArray(10, 'x')};
                          large.claimedSize = 0xFFFFFFF0;
                          large.claimedPackedSize = 1 << 30;
                          entries.append(large);
                      }
                  })});
    files.append({"three hundred megabytes that nobody knows", Changed([](QVector<Entry>& entries) {
                      Entry large{"large", QByteArray(10, 'x')};
                      large.claimedSize = 300 << 20;
                      large.claimedPackedSize = 200 << 20;
                      entries.append(large);
                  })});
}

/// Small parts that a list names very often.
void AddRepeatedParts(QVector<File>& files)
{
    const QByteArray channel = R"(<zk:channel name="a" src="data/mask0.png"/>)";
    files.append({"more kept selections than anybody has",
                  BrokenOra::WithStack(BrokenOra::StackOf("</stack>" + channel.repeated(2001) + "<stack>"))});
    files.append({"textures that claim too much together", Changed([](QVector<Entry>& entries) {
                      QByteArray layers;
                      for (int i = 0; i < 10; ++i) {
                          const QByteArray name = "texture" + QByteArray::number(i);
                          entries.append({name, ClaimingPng(QSize(22000, 22000))});
                          layers +=
                              R"(<layer src="data/layer0.png"><zk:text text="a" brush="image" brush-src=")" +
                              name + R"("/></layer>)";
                      }
                      Named(entries, "stack.xml").bytes = BrokenOra::StackOf(layers);
                  })});
}

void AddWrongLists(QVector<File>& files)
{
    const auto add = [&files](const char* what, const QByteArray& xml) {
        files.append({QByteArray("list: ") + what, BrokenOra::WithStack(xml)});
    };
    const QByteArray good = BrokenOra::StackOf(Layer);
    add("empty", "");
    add("no XML", "layers: one, two");
    add("cut off", good.left(good.size() / 2));
    add("cut off at the end", good.left(good.size() - 2));
    add("two roots", good + good);
    add("text behind the root", good + "more");
    add("another root", R"(<picture w="4" h="4"><stack/></picture>)");
    add("root of another namespace", R"(<image xmlns="urn:x" w="4" h="4"><stack/></image>)");
    add("no layers' element", R"(<image w="4" h="4"/>)");
    add("no size", R"(<image><stack/></image>)");
    add("nothing wide", R"(<image w="0" h="4"><stack/></image>)");
    add("negative height", R"(<image w="4" h="-4"><stack/></image>)");
    add("width of words", R"(<image w="wide" h="4"><stack/></image>)");
    add("width that is no number", R"(<image w="nan" h="4"><stack/></image>)");
    add("width beyond numbers", R"(<image w="1e300" h="4"><stack/></image>)");
    add("too wide", R"(<image w="60001" h="4"><stack/></image>)");
    add("too large together", R"(<image w="60000" h="60000"><stack/></image>)");
    add("infinite resolution", R"(<image w="4" h="4" xres="inf"><stack/></image>)");
    add("quotes that don't close", R"(<image w="4 h="4"><stack/></image>)");
    add("bytes of no encoding", QByteArray(good).replace("one", "\xFF\xFE\xFF"));
    add("zeros", QByteArray(good).replace("one", QByteArray(3, '\0')));
    add("entities that multiply",
        R"(<!DOCTYPE image [<!ENTITY a "aaaaaaaaaa"><!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;">)"
        R"(<!ENTITY c "&b;&b;&b;&b;&b;&b;&b;&b;">]><image w="4" h="4" name="&c;"><stack/></image>)");
    add("entity from a file", R"(<!DOCTYPE image [<!ENTITY a SYSTEM "file:///etc/passwd">]>)"
                              R"(<image w="4" h="4"><stack>&a;</stack></image>)");
    add("type from elsewhere",
        R"(<!DOCTYPE image SYSTEM "http://127.0.0.1/image.dtd"><image w="4" h="4"><stack/></image>)");
    add("unknown entity in a text", BrokenOra::StackOf("&unknown;"));
    add("unknown entity in an attribute", R"(<image w="4" h="4" name="&unknown;"><stack/></image>)");
    add("ten thousand deep",
        BrokenOra::StackOf(QByteArray("<a>").repeated(10000) + QByteArray("</a>").repeated(10000)));
    add("ten thousand deep beside the layers", R"(<image w="4" h="4"><stack/>)" +
                                                   QByteArray("<a>").repeated(10000) +
                                                   QByteArray("</a>").repeated(10000) + "</image>");
    add("ten thousand groups",
        BrokenOra::StackOf(QByteArray("<stack>").repeated(10000) + QByteArray("</stack>").repeated(10000)));
    add("deep inside a layer",
        BrokenOra::StackOf(R"(<layer src="data/layer0.png">)" + QByteArray("<a>").repeated(100) +
                           QByteArray("</a>").repeated(100) + "</layer>"));
    add("more layers than anybody has", BrokenOra::StackOf(Layer.repeated(2001)));
}

void AddWrongLayers(QVector<File>& files)
{
    const auto add = [&files](const char* what, const QByteArray& layer) {
        files.append({QByteArray("layer: ") + what, BrokenOra::WithStack(BrokenOra::StackOf(layer))});
    };
    add("names no part", R"(<layer name="one"/>)");
    add("names a missing part", R"(<layer src="data/gone.png"/>)");
    add("names a file outside", R"(<layer src="../../../../etc/passwd"/>)");
    add("names a file of the system", R"(<layer src="/etc/passwd"/>)");
    add("names an address", R"(<layer src="file:///etc/passwd"/>)");
    add("names what is no picture", R"(<layer src="data/notes.bin"/>)");
    add("names the list", R"(<layer src="stack.xml"/>)");
    add("lies beyond everything", R"(<layer src="data/layer0.png" x="1e12"/>)");
    add("lies at the end of numbers", R"(<layer src="data/layer0.png" y="-2147483648"/>)");
    add("lies nowhere", R"(<layer src="data/layer0.png" x="left"/>)");
    add("opacity that is no number", R"(<layer src="data/layer0.png" opacity="nan"/>)");
    add("opacity of words", R"(<layer src="data/layer0.png" opacity="half"/>)");
    add("groups that add up beyond everything",
        R"(<stack x="16000000"><stack x="16000000">)" + Layer + "</stack></stack>");
    add("mask without a part", R"(<layer src="data/layer0.png"><zk:mask reveals="true"/></layer>)");
    add("mask of a missing part", R"(<layer src="data/layer0.png"><zk:mask src="gone"/></layer>)");
    add("metadata without a part", R"(<layer src="data/layer0.png"><zk:metadata tag="1"/></layer>)");
    add("metadata with an impossible tag",
        R"(<layer src="data/layer0.png"><zk:metadata src="data/notes.bin" tag="99999999"/></layer>)");
    add("guide of no direction", "</stack><zk:guide orientation=\"across\" position=\"1\"/><stack>");
    add("guide at no place", "</stack><zk:guide orientation=\"vertical\" position=\"inf\"/><stack>");
    add("selection of a missing part", "</stack><zk:selection src=\"gone\"/><stack>");
    add("kept selection of a missing part", "</stack><zk:channel name=\"a\" src=\"gone\"/><stack>");
    add("kept selection without a part", "</stack><zk:channel name=\"a\"/><stack>");
    add("kept selection beyond everything",
        "</stack><zk:channel name=\"a\" src=\"data/mask0.png\" x=\"1e12\"/><stack>");
    add("profile of a missing part", "</stack><zk:profile src=\"gone\"/><stack>");
    add("profile without a part", "</stack><zk:profile/><stack>");
}

void AddWrongPictures(QVector<File>& files)
{
    const QByteArray png = Png(QSize(30, 20));
    files.append({"picture: empty", WithLayerBytes("")});
    files.append({"picture: text", WithLayerBytes("a lake in the morning")});
    files.append({"picture: signature only", WithLayerBytes(FileBytes::PngSignature())});
    files.append({"picture: header only", WithLayerBytes(png.left(33))});
    files.append({"picture: cut in the pixels", WithLayerBytes(png.left(png.size() / 2))});
    files.append({"picture: without its end mark", WithLayerBytes(png.left(png.size() - 12))});
    files.append({"picture: a flipped byte", WithLayerBytes(QByteArray(png).replace(60, 1, "?"))});
    files.append({"picture: claims too wide", WithLayerBytes(ClaimingPng(QSize(60001, 1)))});
    files.append({"picture: claims too much", WithLayerBytes(ClaimingPng(QSize(60000, 60000)))});
    files.append({"picture: claims more rows than it has", WithLayerBytes(ClaimingPng(QSize(20000, 20000)))});
    files.append({"picture: claims a negative size", WithLayerBytes(ClaimingPng(QSize(-1, 5)))});
    files.append({"picture: claims no size", WithLayerBytes(ClaimingPng(QSize(0, 0)))});
    files.append({"pictures that claim too much together", Changed([](QVector<Entry>& entries) {
                      Named(entries, "data/layer0.png").bytes = ClaimingPng(QSize(22000, 22000));
                      Named(entries, "stack.xml").bytes = BrokenOra::StackOf(Layer.repeated(10));
                  })});
}
} // namespace

QVector<Entry> BrokenOra::GoodEntries()
{
    const QByteArray layer =
        R"(<layer name="one" src="data/layer0.png" x="1" y="2">)"
        R"(<zk:mask src="data/mask0.png" x="0" y="0" reveals="true" linked="true"/></layer>)";
    QByteArray stack = StackOf(layer);
    stack.replace("</image>", R"(<zk:profile src="data/profile.icc"/></image>)");
    return {
        {"mimetype", "image/openraster"},
        {"stack.xml", stack, true},
        {"data/layer0.png", Png(QSize(30, 20))},
        {"data/mask0.png", Png(QSize(10, 10), PngSpec::Gray)},
        {"data/profile.icc", FileBytes::IccProfile("RGB "), true},
        {"data/notes.bin", QByteArray("what others need ").repeated(20), true},
        {"mergedimage.png", Png(QSize(40, 30))},
        {"Thumbnails/thumbnail.png", Png(QSize(40, 30))},
    };
}

QByteArray BrokenOra::StackOf(const QByteArray& layers)
{
    return R"(<?xml version="1.0" encoding="UTF-8"?><image version="0.0.3" w="40" h="30" )"
           R"(xmlns:zk="urn:zenkari:openraster:1"><stack>)" +
           layers + "</stack></image>";
}

QByteArray BrokenOra::WithStack(const QByteArray& xml)
{
    return Changed([&xml](QVector<Entry>& entries) {
        Entry& stack = Named(entries, "stack.xml");
        stack.bytes = xml;
    });
}

QVector<File> BrokenOra::Files()
{
    QVector<File> files;
    AddCutFiles(files);
    AddWrongDirectories(files);
    AddWrongEnds(files);
    AddWrongNames(files);
    AddWrongTypes(files);
    AddBombs(files);
    AddRepeatedParts(files);
    AddWrongLists(files);
    AddWrongLayers(files);
    AddWrongPictures(files);
    return files;
}
