#!/usr/bin/env python3
"""What stored_bytes.bin must hold, worked out from docs/formats.md without the library.

    expected.py            says where the file differs, and fails
    expected.py --write    writes it

The lines of the field catalogue stand in catalogue.txt beside it; tests/fields has their meaning.
"""
import pathlib
import struct
import sys

HERE = pathlib.Path(__file__).resolve().parent

FLOATS = (187.25, 187.3, 0.1, -0.0, 1.0e-45, 16777217.0, 3.0e38, -1.0 / 3.0, 65536.0, 2.5,
          3.4028234663852886e38, 1.11111, 100.0)
STAMP = bytes.fromhex("2B B1 C4 86 00 00")  # 4 March 2024, 09:35:00

# The record's name without its prefix, the class of its points, and how many floats are stored.
RECORDS = (
    ("DblC", "CDPCDblC", 1),
    ("DblTick", "CDPTDblTick", 1),
    ("DblDblC", "CDPCDblDblC", 2),
    ("DblDblH", "CDPCDblDblH", 2),
    ("DblDblL", "CDPCDblDblL", 2),
    ("DblDblTick", "CDPTDblDblTick", 2),
    ("DblOHLCUDUT", "CDPCDblOHLCUDUT", 12),
    ("DblOHLCUDUTO", "CDPCDblOHLCUDUTO", 13),
    ("DblOHLCUDUTOld", "CDPCDblOHLCUDUTOld", 8),
    ("DblOHLCUDUTOOld", "CDPCDblOHLCUDUTOOld", 9),
)


def word(*numbers):
    return struct.pack(f"<{len(numbers)}H", *numbers)


def dword(*numbers):
    return struct.pack(f"<{len(numbers)}I", *numbers)


def padded(data, size):
    assert len(data) <= size
    return data + bytes(size - len(data))


def text(characters):
    """A text in an archive."""
    data = characters.encode("ascii")
    prefix = bytes([len(data)]) if len(data) < 255 else b"\xFF" + word(len(data))
    return prefix + data


def crc16(data):
    crc = 0xFFFF
    for byte in data:
        crc ^= byte
        for _ in range(8):
            crc = crc >> 1 ^ (0xA001 if crc & 1 else 0)
    return crc


def records():
    for name, point, count in RECORDS:
        values = struct.pack(f"<{count}f", *FLOATS[:count])
        yield "CDPS" + name, values
        yield "CDPST" + name, STAMP + values
        yield point, STAMP + values
    yield "CDPOptDaily", b""
    yield "CDPCnv", b""
    yield "null bar", b"\xFF" * 6 + bytes(48)


def scalars():
    yield "numbers", (bytes.fromhex("FE FE FE FF 34 12 FE FF FF FF 78 56 34 12") +
                      struct.pack("<f", 187.25))
    yield "counts", bytes.fromhex("00 00 FE FF FF FF FF FF 00 00 FF FF 78 56 34 12")
    yield "texts", text("") + text("a\r\nb") + text("c" * 254) + text("d" * 255)


def catalogue():
    # A resolution in an archive is always the word 0, and of a row there is one byte 0.
    yield "CResoln", word(0)
    yield "CField", word(201)
    yield "CStorageSetting", bytes([1, 2]) + dword(2) + word(0, 0)
    yield "CZRGSFieldInfo", bytes(1)
    lines = (HERE / "catalogue.txt").read_text(encoding="ascii").splitlines()
    ids = [int(line.split(",")[1]) for line in lines]
    assert len(lines) == 231 and ids == sorted(set(ids)), "the catalogue's rows stand by their ids"
    data = "".join(line + "\r\n" for line in lines).encode("ascii") + b"VersionInfo"
    yield "catalogue file", data + word(crc16(data), 32)


def calendar():
    yield "calendar as text", b"4:2010,2400,30,10,1;2460,2700,0,0,0;3450,3840,30,10,1;3900,4140,0,0,0"
    yield "ZRGS_SESSION_INFO", word(2010, 2400, 30, 1 << 15 | 10)
    # 09:30 to 16:00 and 17:00 to 21:00, both on Monday and Tuesday; the evening's kind came last, and
    # its reset window is 0.
    yield "compact calendar", (word(570, 960, 1020, 1260) + bytes([0b110, 0b110]) + dword(2) + word(0))


def history():
    pair = word(201, 4, 1)
    yield "ZRGS_FIELD_RESOLUTION", pair
    yield "CFieldResoln", b"\x01" + pair
    lines = pair + word(50000) + word(200, 3, 5, 1000)
    table = b"\x01" + padded(bytes([2 << 3 | 5]) + lines, 241)
    yield "CHistorySettings", table
    yield "CHistorySettingsTemplate", b"\x01" + text("Stocks") + b"\x01" + table
    yield "quote file", (word(35431) + dword(34500) + word(2) +
                         struct.pack("<HBd", 7, 3, 1.5) + struct.pack("<HBd", 8, 3, 100.0))
    yield "table as text", b"Trade Record 1 Day 50000 days, Bid Record 5 Minutes 1000 days"
    yield "table for machines", b"2:201,Trade Record,1,4,50000;200,Bid Record,5,3,1000"
    yield "line with tabs", b"Bid Record\t5 Minutes\t1000 days"
    yield "pair with brackets", b"Bid Record [5 Minute]s"


def quote():
    values = (
        (0, dword(34500)),
        (1, word(45355)),
        (2, b"IBM\0"),
        (4, struct.pack("<d", 0.1)),
        (5, struct.pack("<f", 0.1)),
        (6, dword(0xFFFFFFFE)),
        (7, dword(0xFEDCBA98)),
        (8, word(0xFFFE)),
        (9, word(0xFEDC)),
        (10, b"x"),
        (11, b"\xFE"),
        (4, bytes(8)),
    )
    yield "quote fields", b"".join(
        word(number, kind, len(value)) + value for number, (kind, value) in enumerate(values, 1))


def news():
    def record(kind, status, body):
        return padded(dword(kind, 7, 0x11223344) + bytes([status]) + body, 273)
    yield "news by file name", record(0, 0, b"story.txt\0")
    yield "news by hint", record(1, 9, dword(0x12345678))
    yield "news as data", record(2, 0, dword(4) + b"\x01\x02\x00\xFF")


def query():
    data = bytearray(82715)

    def put(at, piece):
        data[at:at + len(piece)] = piece
    put(0, dword(4))           # symbol data
    put(8, b"\x01")            # ADVISE
    put(9, dword(1, 2))        # a chart of bars
    put(17, word(201, 3, 5))   # of field 201, 5 minutes
    put(37, word(8, 11))       # the snapshot
    put(57, dword(2))
    put(61, dword(7, 41, 42))  # the group
    put(465, word(2))
    put(467, word(7, 10))      # what is asked for
    put(667, dword(2))
    conditions = ((31, b"ABC"), (229, b"30"), (365, b"42"))
    for number, (field, value) in enumerate(conditions):
        put(671 + 4102 * number, word(field) + dword(0) + value)
    put(82711, dword(len(conditions)))
    yield "QUERY_INFO", bytes(data)


def exchange():
    yield "CZRGSExchange", (word(0x0102) + padded(b"A market", 71) + padded(b"AM", 7) + b"\x03" +
                            padded(b"12.5", 10) + b"0.00000001" + word(300) +
                            word(570, 960, 0, 0) + b"\x3E\x00" + dword(15, 0x01020304))


def parts():
    for kind in (records, scalars, catalogue, calendar, history, quote, news, query, exchange):
        yield from kind()


def framed(name, data):
    return dword(len(name)) + name.encode("ascii") + dword(len(data)) + data


def main():
    path = HERE / "stored_bytes.bin"
    expected = [(name, framed(name, data)) for name, data in parts()]
    if sys.argv[1:] == ["--write"]:
        path.write_bytes(b"".join(piece for _, piece in expected))
        return 0
    there = path.read_bytes()
    for name, piece in expected:
        if not there.startswith(piece):
            print(f"stored_bytes.bin: {name} isn't as docs/formats.md has it")
            return 1
        there = there[len(piece):]
    if there:
        print(f"stored_bytes.bin: {len(there)} bytes too many")
        return 1
    print(f"stored_bytes.bin holds the {len(expected)} parts as docs/formats.md has them")
    return 0


if __name__ == "__main__":
    sys.exit(main())
