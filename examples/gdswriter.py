"""A small writer of GDSII streams: the elements that the example chip uses, nothing else.

Coordinates are whole database units. The time stamps are fixed, so the same chip is always the same bytes.
"""

import struct

# Record types with their data type in the low byte.
HEADER, BGNLIB, LIBNAME, UNITS, ENDLIB = 0x0002, 0x0102, 0x0206, 0x0305, 0x0400
BGNSTR, STRNAME, ENDSTR = 0x0502, 0x0606, 0x0700
BOUNDARY, PATH, SREF, AREF, TEXT, BOX = 0x0800, 0x0900, 0x0A00, 0x0B00, 0x0C00, 0x2D00
LAYER, DATATYPE, WIDTH, XY, ENDEL, SNAME, COLROW = 0x0D02, 0x0E02, 0x0F03, 0x1003, 0x1100, 0x1206, 0x1302
TEXTTYPE, PRESENTATION, STRING, STRANS, MAG, ANGLE = 0x1602, 0x1701, 0x1906, 0x1A01, 0x1B05, 0x1C05
PATHTYPE, BOXTYPE, BGNEXTN, ENDEXTN = 0x2102, 0x2E02, 0x3003, 0x3103

FLUSH, ROUND, EXTENDED, CUSTOM = 0, 1, 2, 4  # path types

# Orientations as (mirrored about the x axis first, then turned by so many quarter turns counter-clockwise).
R0, R90, R180, R270 = (False, 0), (False, 1), (False, 2), (False, 3)
MX, MXR90, MY, MYR90 = (True, 0), (True, 1), (True, 2), (True, 3)
ORIENTATIONS = {"R0": R0, "R90": R90, "R180": R180, "R270": R270, "MX": MX, "MXR90": MXR90, "MY": MY, "MYR90": MYR90}

TIME_STAMP = (2020, 1, 1, 0, 0, 0) * 2


def turned(point, orientation):
    """`point` after the orientation: mirror about the x axis first, then the quarter turns."""
    x, y = point
    mirrored, quarters = orientation
    if mirrored:
        y = -y
    for _ in range(quarters):
        x, y = -y, x
    return x, y


def real8(value):
    """The format's excess-64, base-16 floating point number of eight bytes."""
    if value == 0:
        return bytes(8)
    sign = 0x80 if value < 0 else 0
    value, exponent = abs(value), 64
    while value >= 1:
        value, exponent = value / 16, exponent + 1
    while value < 1 / 16:
        value, exponent = value * 16, exponent - 1
    return struct.pack(">B", sign | exponent) + round(value * 2**56).to_bytes(7, "big")


def record(kind, payload=b""):
    return struct.pack(">HH", 4 + len(payload), kind) + payload


def short_record(kind, *values):
    return record(kind, struct.pack(f">{len(values)}h", *values))


def int_record(kind, *values):
    return record(kind, struct.pack(f">{len(values)}i", *values))


def text_record(kind, text):
    payload = text.encode("latin-1")
    return record(kind, payload + bytes(len(payload) % 2))


class Structure:
    """One cell: its elements, in the order in which they were added."""

    def __init__(self, name):
        self.name = name
        self.records = []

    def _add(self, *records):
        self.records.extend(records)

    def _points(self, points):
        self._add(int_record(XY, *(coordinate for point in points for coordinate in point)))

    def _begin(self, kind, layer, type_kind):
        self._add(record(kind), short_record(LAYER, layer[0]), short_record(type_kind, layer[1]))

    def _orient(self, orientation, magnification=None):
        mirrored, quarters = orientation
        if not mirrored and not quarters and magnification is None:
            return
        self._add(record(STRANS, struct.pack(">H", 0x8000 if mirrored else 0)))
        if magnification is not None:
            self._add(record(MAG, real8(magnification)))
        if quarters:
            self._add(record(ANGLE, real8(90.0 * quarters)))

    def polygon(self, layer, points):
        self._begin(BOUNDARY, layer, DATATYPE)
        self._points(list(points) + [points[0]])
        self._add(record(ENDEL))

    def rect(self, layer, left, bottom, right, top):
        self.polygon(layer, [(left, bottom), (right, bottom), (right, top), (left, top)])

    def square(self, layer, centre, size):
        x, y = centre
        self.rect(layer, x - size // 2, y - size // 2, x + size // 2, y + size // 2)

    def box(self, layer, left, bottom, right, top):
        """The format's BOX element, which marks an outline rather than a mask shape."""
        self._begin(BOX, layer, BOXTYPE)
        self._points([(left, bottom), (right, bottom), (right, top), (left, top), (left, bottom)])
        self._add(record(ENDEL))

    def path(self, layer, width, points, ends=FLUSH, begin_extension=0, end_extension=0):
        self._begin(PATH, layer, DATATYPE)
        if ends:
            self._add(short_record(PATHTYPE, ends))
        self._add(int_record(WIDTH, width))
        if ends == CUSTOM:
            self._add(int_record(BGNEXTN, begin_extension))
            self._add(int_record(ENDEXTN, end_extension))
        self._points(points)
        self._add(record(ENDEL))

    def text(self, layer, text, origin, height, horizontal=1, vertical=1, orientation=R0):
        """`horizontal`: 0 left, 1 centre, 2 right; `vertical`: 0 upper, 1 centre, 2 lower."""
        self._begin(TEXT, layer, TEXTTYPE)
        self._add(record(PRESENTATION, struct.pack(">H", vertical << 2 | horizontal)))
        self._orient(orientation, height / 1000)
        self._points([origin])
        self._add(text_record(STRING, text))
        self._add(record(ENDEL))

    def place(self, cell, origin, orientation=R0):
        self._add(record(SREF))
        self._add(text_record(SNAME, cell.name))
        self._orient(orientation)
        self._points([origin])
        self._add(record(ENDEL))

    def place_array(self, cell, origin, columns, rows, column_step, row_step, orientation=R0):
        """`column_step` and `row_step` are vectors in this cell, from one column (row) to the next."""
        x, y = origin
        self._add(record(AREF))
        self._add(text_record(SNAME, cell.name))
        self._orient(orientation)
        self._add(short_record(COLROW, columns, rows))
        self._points([origin, (x + columns * column_step[0], y + columns * column_step[1]),
                      (x + rows * row_step[0], y + rows * row_step[1])])
        self._add(record(ENDEL))

    def to_bytes(self):
        return (short_record(BGNSTR, *TIME_STAMP) + text_record(STRNAME, self.name) + b"".join(self.records)
                + record(ENDSTR))


class Library:
    """A list of cells, masters before the cells that place them. One database unit is 0.001 micrometre."""

    def __init__(self, name):
        self.name = name
        self.structures = []

    def cell(self, name):
        self.structures.append(Structure(name))
        return self.structures[-1]

    def to_bytes(self):
        return (short_record(HEADER, 600) + short_record(BGNLIB, *TIME_STAMP) + text_record(LIBNAME, self.name)
                + record(UNITS, real8(0.001) + real8(1e-9))
                + b"".join(structure.to_bytes() for structure in self.structures) + record(ENDLIB))
