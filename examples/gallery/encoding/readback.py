# SPDX-FileCopyrightText: Dravelin contributors
# SPDX-License-Identifier: MIT

"""Reads with Python's standard library what the gallery's tour has encoded, compares it with the source, and writes forms of
its own for the gallery to read: readback.py FOLDER"""

import base64
import pathlib
import plistlib
import sys
import xml.etree.ElementTree as ElementTree
import zlib


def records(blob):
    text = zlib.decompress(base64.b64decode(blob, validate=True)).decode()
    pairs = (record.split(",") for record in text.split("\r") if record)
    return {key: base64.b64decode(value, validate=True).decode() for key, value in pairs}


def from_blob(data):
    return records(data)["content"].encode("latin-1")


def from_document(data):
    return base64.b64decode(ElementTree.fromstring(data).find("file").text)


def from_archive(data):
    archive = plistlib.loads(data)
    resolve = lambda uid: archive["$objects"][uid["CF$UID"]]
    root = resolve(archive["$top"]["root"])
    keys = [resolve(uid) for uid in root["NS.keys"]]
    return resolve(root["NS.objects"][keys.index("content")])


READERS = {
    "base64": lambda data: base64.b64decode(data, validate=True),
    "zlib": zlib.decompress,
    "zlib.base64": lambda data: zlib.decompress(base64.b64decode(data, validate=True)),
    "blob": from_blob,
    "xml": from_document,
    "plist": from_archive,
}


def written_by_python(source):
    record = "content,%s\r" % base64.b64encode(source.decode("latin-1").encode()).decode()
    return {
        "base64": base64.encodebytes(source),
        "zlib": zlib.compress(source, 9),
        "zlib.base64": base64.encodebytes(zlib.compress(source, 1)),
        "blob": base64.encodebytes(zlib.compress(record.encode())),
    }


def main(folder):
    failed = 0

    def expect(holds, what):
        nonlocal failed
        failed += not holds
        print("ok    " if holds else "WRONG ", what)

    for source_file in sorted(folder.glob("*.source")):
        source = source_file.read_bytes()
        for suffix, read in READERS.items():
            name = source_file.stem + "." + suffix
            expect(read((folder / name).read_bytes()) == source, name)
        for suffix, data in written_by_python(source).items():
            (folder / (source_file.stem + ".python." + suffix)).write_bytes(data)
    canonical = lambda name: ElementTree.canonicalize((folder / name).read_text(), strip_text=True)
    expect(canonical("document.source") == canonical("document.pretty.xml"), "document.pretty.xml")
    return failed > 0


sys.exit(main(pathlib.Path(sys.argv[1])))
