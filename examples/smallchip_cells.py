"""The made-up process of the example chip and its cells: gates, a flip-flop, a bit of memory, pads.

All figures are nanometres, which are the database units of the file. Standard cells stand on a grid of TRACK: diffusion
contacts on even columns, gates on odd ones, every pin in the centre of a column, where a router reaches it from above.
"""

import math
from dataclasses import dataclass, field

from gdswriter import CUSTOM, EXTENDED, MX, MY, ORIENTATIONS, R0, R180, ROUND

NWELL, ACTIVE, POLY, CONTACT = (1, 0), (2, 0), (4, 0), (5, 0)
METAL1, METAL1_PIN, METAL1_LABEL = (6, 0), (6, 1), (6, 2)
VIA1, METAL2, VIA2 = (7, 0), (8, 0), (9, 0)
METAL3, METAL3_LABEL, OPENING = (10, 0), (10, 2), (11, 0)
ANNOTATION, OUTLINE = (62, 0), (63, 0)

TRACK = 1200
ROW_HEIGHT = 12000
WIRE = 600
PIN_Y = 5700  # height of every pin above the bottom of its cell
BIT_WIDTH, BIT_HEIGHT = 3600, 3000
PAD_PITCH, PAD_DEPTH = 24000, 30000


def column(index):
    """Centre of a column of the cell grid."""
    return TRACK // 2 + TRACK * index


@dataclass
class StandardCell:
    structure: object
    tracks: int
    inputs: dict = field(default_factory=dict)  # pin name -> column
    outputs: dict = field(default_factory=dict)


def make_frame(library, name, tracks):
    """Well, supply rails and outline that every standard cell has."""
    cell = library.cell(name)
    width = tracks * TRACK
    cell.rect(NWELL, -300, 5900, width + 300, ROW_HEIGHT + 600)
    cell.rect(METAL1, 0, -600, width, 600)
    cell.rect(METAL1, 0, ROW_HEIGHT - 600, width, ROW_HEIGHT + 600)
    cell.box(OUTLINE, 0, 0, width, ROW_HEIGHT)
    return cell


def draw_gate(cell, index):
    """One poly line over both actives, widened for its contact between them."""
    x = column(2 * index + 1)
    right = [(200, 900), (200, 5300), (400, 5300), (400, 6100), (200, 6100), (200, 11100)]
    left = [(-dx, y) for dx, y in reversed(right)]
    cell.polygon(POLY, [(x + dx, y) for dx, y in right + left])
    cell.square(CONTACT, (x, PIN_Y), 400)
    cell.square(METAL1, (x, PIN_Y), 800)


def contact_strip(cell, x, heights, bottom, top):
    for y in heights:
        cell.square(CONTACT, (x, y), 400)
    cell.rect(METAL1, x - WIRE // 2, bottom, x + WIRE // 2, top)


def draw_transistors(cell, gates, ground, supply, n_output, p_output):
    """`gates` transistor pairs. The other arguments are columns: tied to a rail, or contacted for an output wire."""
    right = column(2 * gates) + 300
    cell.rect(ACTIVE, 300, 1500, right, 4200)
    cell.rect(ACTIVE, 300, 7200, right, 10800)
    for index in range(gates):
        draw_gate(cell, index)
    for index in ground:
        contact_strip(cell, column(index), (2100, 3300), 0, 3700)
    for index in supply:
        contact_strip(cell, column(index), (8200, 9200, 10200), 7800, ROW_HEIGHT)
    for index in n_output:
        contact_strip(cell, column(index), (2100, 3300), 1700, 3700)
    for index in p_output:
        contact_strip(cell, column(index), (8200, 9200, 10200), 7800, 10600)


def join(cell, *points):
    cell.path(METAL1, WIRE, points, EXTENDED)


def label_pins(cell):
    for name, index in {**cell.inputs, **cell.outputs}.items():
        cell.structure.square(METAL1_PIN, (column(index), PIN_Y), WIRE)
        cell.structure.text(METAL1_LABEL, name, (column(index), PIN_Y), 600)
    return cell


def make_inverter(library):
    cell = make_frame(library, "INV", 3)
    draw_transistors(cell, 1, ground=[0], supply=[0], n_output=[2], p_output=[2])
    join(cell, (column(2), 3700), (column(2), 7800))
    return label_pins(StandardCell(cell, 3, {"A": 1}, {"Y": 2}))


def make_nand2(library):
    cell = make_frame(library, "NAND2", 5)
    draw_transistors(cell, 2, ground=[0], supply=[0, 4], n_output=[4], p_output=[2])
    join(cell, (column(4), 3700), (column(4), 6900), (column(2), 6900), (column(2), 7800))
    return label_pins(StandardCell(cell, 5, {"A": 1, "B": 3}, {"Y": 4}))


def make_nor2(library):
    cell = make_frame(library, "NOR2", 5)
    draw_transistors(cell, 2, ground=[0, 4], supply=[0], n_output=[2], p_output=[4])
    join(cell, (column(4), 7800), (column(4), 4500), (column(2), 4500), (column(2), 3700))
    return label_pins(StandardCell(cell, 5, {"A": 1, "B": 3}, {"Y": 4}))


def make_flip_flop(library):
    """Eight transistor pairs in two loops: the look of a flip-flop, not a design that was simulated."""
    cell = make_frame(library, "DFF", 17)
    outputs = [2, 6, 10, 14, 16]
    draw_transistors(cell, 8, ground=[0, 4, 8, 12], supply=[0, 4, 8, 12], n_output=outputs, p_output=outputs)
    for index in outputs:
        join(cell, (column(index), 3700), (column(index), 7800))
    join(cell, (column(2), 4500), (column(5), 4500), (column(5), PIN_Y))
    join(cell, (column(6), 6900), (column(9), 6900), (column(9), PIN_Y))
    join(cell, (column(10), 4500), (column(13), 4500), (column(13), PIN_Y))
    for index in (6, 10, 14):
        join(cell, (column(index), PIN_Y), (column(index + 1), PIN_Y))
    return label_pins(StandardCell(cell, 17, {"D": 1, "CK": 3}, {"Q": 16}))


def make_tap(library):
    cell = make_frame(library, "TAP", 2)
    for bottom, top, rail in ((1200, 3600, 0), (8400, 10800, ROW_HEIGHT)):
        cell.rect(ACTIVE, 600, bottom, 1800, top)
        for y in (bottom + 600, top - 600):
            cell.square(CONTACT, (TRACK, y), 400)
        cell.path(METAL1, WIRE, [(TRACK, (bottom + top) // 2), (TRACK, rail)], CUSTOM, 900, 0)
    return StandardCell(cell, 2)


def make_fill(library):
    return StandardCell(make_frame(library, "FILL", 1), 1)


def make_via(library, name, cut_layer, lower, upper):
    cell = library.cell(name)
    cell.square(lower, (0, 0), WIRE)
    cell.square(cut_layer, (0, 0), 300)
    cell.square(upper, (0, 0), WIRE)
    return cell


def make_bit_quad(library):
    """Four memory bits, mirrored into each other as memories are: contacts and wells are shared across the borders."""
    bit = library.cell("BIT")
    bit.rect(ACTIVE, 600, 300, 1200, 2700)
    bit.polygon(ACTIVE, [(2000, 300), (2700, 300), (2700, 1800), (3300, 1800), (3300, 2700), (2000, 2700)])
    bit.polygon(POLY, [(0, 1300), (1500, 1300), (1500, 900), (2300, 900), (2300, 1300), (3600, 1300), (3600, 1700),
                       (0, 1700)])
    bit.rect(POLY, 400, 2100, 2900, 2450)
    for x, y in ((900, 600), (900, 2400), (2350, 600), (3000, 2300)):
        bit.square(CONTACT, (x, y), 300)
    bit.rect(METAL1, 0, 350, 3600, 750)
    bit.polygon(METAL1, [(600, 2100), (2000, 2100), (2000, 1200), (2400, 1200), (2400, 2600), (600, 2600)])
    bit.rect(METAL2, 700, 0, 1200, BIT_HEIGHT)
    bit.rect(METAL2, 2700, 0, 3200, BIT_HEIGHT)
    bit.box(OUTLINE, 0, 0, BIT_WIDTH, BIT_HEIGHT)
    quad = library.cell("BIT_QUAD")
    for orientation in (R0, MX, MY, R180):
        quad.place(bit, (BIT_WIDTH, BIT_HEIGHT), orientation)
    quad.rect(NWELL, 1800, 0, 5400, 2 * BIT_HEIGHT)
    return quad


def make_word_driver(library):
    cell = library.cell("WORD_DRIVER")
    cell.rect(ACTIVE, 900, 400, 4300, 1100)
    cell.rect(ACTIVE, 900, 1700, 4300, 2600)
    for x in (1500, 2500, 3500):
        cell.rect(POLY, x - 150, 200, x + 150, 2800)
    for x in (2000, 3000, 4000):
        cell.square(CONTACT, (x, 750), 300)
        cell.square(CONTACT, (x, 2150), 300)
        cell.rect(METAL1, x - 250, 500, x + 250, 2450)
    cell.rect(METAL2, 300, 600, 900, 2400)
    return cell


def make_sense_amplifier(library):
    cell = library.cell("SENSE_AMP")
    for bottom in (600, 3600, 6600):
        cell.rect(ACTIVE, 500, bottom, 3100, bottom + 2000)
        for x in (1200, 2400):
            cell.rect(POLY, x - 150, bottom - 300, x + 150, bottom + 2300)
        for x in (800, 1800, 2800):
            cell.square(CONTACT, (x, bottom + 1000), 300)
            cell.rect(METAL1, x - 250, bottom + 400, x + 250, bottom + 1600)
    cell.rect(NWELL, 0, 6200, BIT_WIDTH, 9200)
    cell.rect(METAL1, 0, 2800, BIT_WIDTH, 3100)
    for x in (950, 2950):
        cell.rect(METAL2, x - 250, 600, x + 250, 9600)
    return cell


def make_memory(library):
    """14 by 16 bits with their drivers at the left and amplifiers below; 55,200 by 57,600."""
    memory = library.cell("MEMORY")
    quad = make_bit_quad(library)
    memory.place_array(make_word_driver(library), (0, 9600), 1, 16, (4800, 0), (0, BIT_HEIGHT))
    memory.place_array(make_sense_amplifier(library), (4800, 0), 14, 1, (BIT_WIDTH, 0), (0, 9600))
    memory.place_array(quad, (4800, 9600), 7, 8, (2 * BIT_WIDTH, 0), (0, 2 * BIT_HEIGHT))
    memory.text(METAL3_LABEL, "MEMORY 16 x 14", (30000, 33600), 4000)
    memory.box(OUTLINE, 0, 0, 55200, 57600)
    return memory


def octagon(centre, radius, corner):
    x, y = centre
    inner = radius - corner
    return [(x + dx, y + dy) for dx, dy in ((-inner, -radius), (inner, -radius), (radius, -inner), (radius, inner),
                                            (inner, radius), (-inner, radius), (-radius, inner), (-radius, -inner))]


def make_pad(library):
    """A bond pad at the bottom edge of the chip: opening, protection diodes, two supply rails, a neck to the inside."""
    finger = library.cell("ESD_FINGER")
    finger.rect(ACTIVE, 0, 0, 1600, 9000)
    for y in range(700, 9000, 950):
        finger.square(CONTACT, (800, y), 400)
    finger.rect(METAL1, 400, 300, 1200, 8700)
    pad = library.cell("PAD")
    for layer in (METAL1, METAL2, METAL3):
        pad.polygon(layer, octagon((12000, 9600), 8600, 2500))
    pad.polygon(OPENING, octagon((12000, 9600), 7400, 2200))
    pad.place_array(finger, (600, 19600), 9, 1, (2650, 0), (0, 9000))
    pad.rect(METAL3, 0, 20000, PAD_PITCH, 23000)
    pad.rect(METAL3, 0, 24500, PAD_PITCH, 27500)
    pad.rect(METAL2, 10800, 18200, 13200, PAD_DEPTH + 1200)
    pad.box(OUTLINE, 0, 0, PAD_PITCH, PAD_DEPTH)
    return pad


def make_corner(library):
    """Turns the two rails of the pads round the lower left corner of the chip."""
    corner = library.cell("CORNER")
    for near, far in ((20000, 23000), (24500, 27500)):
        corner.polygon(METAL3, [(near, PAD_DEPTH), (near, near + 2000), (near + 2000, near), (PAD_DEPTH, near),
                                (PAD_DEPTH, far), (far + 1000, far), (far, far + 1000), (far, PAD_DEPTH)])
    corner.polygon(METAL1, [(4000, 4000), (16000, 4000), (4000, 16000)])
    corner.box(OUTLINE, 0, 0, PAD_DEPTH, PAD_DEPTH)
    return corner


def make_inductor(library):
    """An octagonal spiral of the top metal around the origin, with its inner end led out below."""
    inductor = library.cell("INDUCTOR")
    points = []
    for corner in range(8 * 3 + 1):
        radius = 16500 - 390 * corner
        angle = math.radians(-67.5 + 45 * corner)
        points.append((round(radius * math.cos(angle) / 100) * 100, round(radius * math.sin(angle) / 100) * 100))
    inductor.path(METAL3, 1800, points, ROUND)
    inner_x, inner_y = points[-1]
    inductor.square(VIA2, points[-1], 1000)
    inductor.path(METAL2, 1800, [points[-1], (inner_x, inner_y - 11200)], ROUND)
    inductor.box(OUTLINE, -17500, -17500, 17500, 17500)
    return inductor


def make_monitor(library):
    """Eight columns, one for each orientation: a mark, and below it a text in each alignment."""
    mark = library.cell("MARK")
    mark.polygon(METAL1, [(0, 0), (300, 0), (300, 500), (900, 500), (900, 800), (300, 800), (300, 1200), (1200, 1200),
                          (1200, 1500), (0, 1500)])
    monitor = library.cell("MONITOR")
    for index, (name, orientation) in enumerate(ORIENTATIONS.items()):
        x = 1200 + 2300 * index
        monitor.place(mark, (x, 31500), orientation)
        monitor.text(ANNOTATION, name, (x, 33600), 500)
        for horizontal in range(3):
            for vertical in range(3):
                y = 1500 + 3200 * (3 * horizontal + vertical)
                monitor.square(METAL1, (x, y), 200)
                text = "LCR"[horizontal] + "UCL"[vertical]
                monitor.text(ANNOTATION, text, (x, y), 500, horizontal, vertical, orientation)
    monitor.box(OUTLINE, 0, 0, 18400, 34500)
    return monitor
