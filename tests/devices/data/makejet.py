#!/usr/bin/env python3
"""Makes Jet3.ref and Jet4.ref: small device databases of versions 3 and 4 of the Jet format, written byte by
byte from the format's published layout. Run by hand; the files are kept."""
import os
import struct


class Version:
    def __init__(self, number):
        self.is4 = number == 4
        self.page = 4096 if self.is4 else 2048
        self.rows_at = 12 if self.is4 else 8  # the number of rows on a data page; their offsets follow

    def count(self, n):  # of columns, and offsets, in a row
        return struct.pack("<H" if self.is4 else "<B", n)

    def text(self, s):
        if not self.is4:
            return s.encode("cp1252")
        if all(0 < ord(c) < 256 for c in s) and len(s) > 2:
            return b"\xff\xfe" + s.encode("latin-1")  # compressed
        return s.encode("utf-16le")


BYTE, INT, LONG, TEXT, OLE, MEMO = 2, 3, 4, 10, 11, 12
SIZES = {BYTE: ("<B", 1), INT: ("<h", 2), LONG: ("<i", 4)}


class File:
    def __init__(self, version):
        self.v = version
        self.pages = [self.header(), b"\0" * version.page, None]  # page 2: the catalogue's definition
        self.maps = []  # rows of the page of usage maps
        self.map_page = self.add(None)

    def add(self, page):
        self.pages.append(page)
        return len(self.pages) - 1

    def header(self):
        page = bytearray(self.v.page)
        page[0:4] = b"\0\1\0\0"
        page[4:20] = b"Standard Jet DB\0"
        struct.pack_into("<I", page, 0x14, 1 if self.v.is4 else 0)
        hidden = bytearray(128 if self.v.is4 else 126)
        struct.pack_into("<H", hidden, 0x6E - 0x18 if self.v.is4 else 0x3A - 0x18, 0x0409)
        struct.pack_into("<H", hidden, 0x3C - 0x18, 1252)
        page[0x18 : 0x18 + len(hidden)] = rc4(b"\xc7\xda\x39\x6b", hidden)
        return bytes(page)

    def data_page(self, owner, rows):
        page = bytearray(self.v.page)
        page[0:2] = b"\1\1"
        page[4:8] = owner
        struct.pack_into("<H", page, self.v.rows_at, len(rows))
        end = self.v.page
        for i, row in enumerate(rows):
            end -= len(row)
            page[end : end + len(row)] = row
            struct.pack_into("<H", page, self.v.rows_at + 2 + 2 * i, end)
        head = self.v.rows_at + 2 + 2 * len(rows)
        assert head <= end
        struct.pack_into("<H", page, 2, end - head)
        return bytes(page)

    def memo(self, s):
        data = self.v.text(s)
        if len(data) < 60:
            return struct.pack("<IIi", len(data) | 0x80000000, 0, 0) + data
        page = self.add(self.data_page(b"LVAL", [data]))  # on a page of its own
        return struct.pack("<IIi", len(data) | 0x40000000, page << 8, 0)

    def row(self, columns, values):
        fixed, variable, offsets, mask = b"", b"", [], 0
        start = len(self.v.count(0))
        for i, ((_, kind), value) in enumerate(zip(columns, values)):
            if value is not None:
                mask |= 1 << i
            if kind in SIZES:
                fixed += struct.pack(SIZES[kind][0], value or 0)
        for (_, kind), value in zip(columns, values):
            if kind in SIZES:
                continue
            offsets.append(start + len(fixed) + len(variable))
            if value is not None:
                variable += self.memo(value) if kind == MEMO else self.v.text(value)
        end = start + len(fixed) + len(variable)
        assert self.v.is4 or end < 200, "a version 3 row of more needs a jump table"
        tail = b"".join(self.v.count(n) for n in [end] + offsets[::-1])
        bits = mask.to_bytes((len(columns) + 7) // 8, "little")
        return self.v.count(len(columns)) + fixed + variable + tail + self.v.count(len(offsets)) + bits

    def usage_map(self, pages):
        bits = bytearray(64)
        for page in pages:
            bits[page // 8] |= 1 << page % 8
        self.maps.append(b"\0" + struct.pack("<I", 0) + bytes(bits))
        return struct.pack("<I", self.map_page << 8 | len(self.maps) - 1)

    def table(self, columns, rows, page=None):
        if page is None:
            page = self.add(None)
        used, batch, size = [], [], 0
        for row in [self.row(columns, r) for r in rows] + [None]:
            if batch and (row is None or size + len(row) + 2 > self.v.page - 40):
                used.append(self.add(self.data_page(struct.pack("<I", page), batch)))
                batch, size = [], 0
            if row is not None:
                batch.append(row)
                size += len(row) + 2
        self.pages[page] = self.definition(columns, len(rows), self.usage_map(used))
        return page

    def definition(self, columns, rows, used):
        variable = sum(kind not in SIZES for _, kind in columns)
        counts = struct.pack("<BHHHII", 0x4E, len(columns), variable, len(columns), 0, 0) + used + self.usage_map([])
        if self.v.is4:
            body = struct.pack("<IIIIIII", 1625, rows, 0, 1, 0, 0, 0) + counts
        else:
            body = struct.pack("<II", rows, 0) + counts
        fixed_at = variable_at = 0
        for i, (_, kind) in enumerate(columns):
            size = SIZES[kind][1] if kind in SIZES else 255 if kind == TEXT else 0
            flags = (1 if kind in SIZES else 0) | 2
            if self.v.is4:
                compressed = 1 if kind in (TEXT, MEMO) else 0
                body += struct.pack("<BIHHHHHBBIHH", kind, 1625, i, variable_at, i, 0x0409, 0, flags, compressed,
                                    0, fixed_at, size)
            else:
                body += struct.pack("<BHHHHHHBHH", kind, i, variable_at, i, 0x0409, 1252, 0, flags, fixed_at, size)
            if kind in SIZES:
                fixed_at += size
            else:
                variable_at += 1
        for name, _ in columns:
            raw = name.encode("utf-16le") if self.v.is4 else name.encode("cp1252")
            body += struct.pack("<H" if self.v.is4 else "<B", len(raw)) + raw
        head = b"\2\1" + b"VC" + struct.pack("<II", 0, 12 + len(body))
        page = head + body + b"\xff\xff"
        assert len(page) <= self.v.page
        return page.ljust(self.v.page, b"\0")

    def bytes(self, tables):
        objects = []
        for name, (columns, rows) in tables.items():
            objects.append((self.table(columns, rows), 0x0F000001, 1, 0, name, None, None))
        objects.append((2, 0x0F000001, 1, -0x80000000, "MSysObjects", None, None))
        columns = [("Id", LONG), ("ParentId", LONG), ("Type", INT), ("Flags", LONG), ("Name", TEXT), ("Owner", TEXT),
                   ("LvProp", OLE)]
        self.table(columns, objects, page=2)
        self.pages[self.map_page] = self.data_page(struct.pack("<I", 0), self.maps)
        return b"".join(self.pages)


def rc4(key, data):
    state, j = list(range(256)), 0
    for i in range(256):
        j = (j + state[i] + key[i % len(key)]) % 256
        state[i], state[j] = state[j], state[i]
    i = j = 0
    out = bytearray()
    for byte in data:
        i = (i + 1) % 256
        j = (j + state[i]) % 256
        state[i], state[j] = state[j], state[i]
        out.append(byte ^ state[(state[i] + state[j]) % 256])
    return bytes(out)


KEY = ("PKey", LONG)
NAME = ("Name", TEXT)
TABLES = {
    "Manufacturers": ([KEY, NAME], [(1, "Zeta"), (2, "alpha"), (3, "Beta")]),
    "Packages": ([KEY, NAME], [(1, "PLCC"), (2, "DIP")]),
    "Devices": (
        [KEY, NAME, ("ManufacturerKey", LONG), ("PackageKey", LONG), ("MnemonicKey", LONG)],
        [(10, "Zap4", 2, 2, 1), (11, "bee2", 2, 2, 2), (12, "Nil", 2, 2, 3), (13, None, 1, 1, 2)]
        + [(100 + i, f"Many{i:03}", 3, 2, 1) for i in range(120)],
    ),
    "Mnemonics": (
        [KEY, NAME, ("PinCount", INT), ("SpecialOptions", TEXT)],
        [(1, "P4", 4, "fast"), (2, "V2", 2, None), (3, None, None, None)],
    ),
    "MnemonicLibrary": ([("MnemonicKey", LONG), ("LibraryKey", LONG)], [(1, 1), (1, 2), (2, 1), (3, 2)]),
    "Libraries": ([KEY], [(1,), (2,)]),
    "AlternatePartNumbers": ([("DeviceKey", LONG), ("PartNumber", TEXT)], [(10, "Z4B"), (10, "Z4A-µ")]),
    "RelatedMnemonics": ([("MnemonicKey", LONG), NAME], [(1, "V2"), (1, "P3")]),
    "PinList": (
        [("MnemonicKey", LONG), ("Pin", BYTE), NAME],
        [(1, 1, "I/CLK"), (1, 2, "GND"), (1, 3, None), (1, 4, "VCC")],
    ),
    "Notes": (
        [("MnemonicKey", LONG), ("Notes", MEMO)],
        [(1, "Short.\r\nOf two lines."), (2, "A long note. " * 60 + "End.")],
    ),
}

for number in (3, 4):
    folder = os.path.dirname(os.path.abspath(__file__))
    with open(os.path.join(folder, f"Jet{number}.ref"), "wb") as file:
        file.write(File(Version(number)).bytes(TABLES))
