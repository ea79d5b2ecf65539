#!/usr/bin/env python3
"""Makes the example chip, smallchip.gds: rows of standard cells, routed; a memory, an inductor and a ring of pads.

    make_smallchip.py [-o FILE]

The process is made up (smallchip.layers names its layers) and the circuit does nothing, but its wires do not short: the
router gives each net one horizontal trunk on metal 3 and a vertical branch on metal 2 for each pin. The result is the
same on every machine. Needs nothing beyond Python's standard library.
"""

import argparse
import pathlib

import smallchip_cells as cells
from gdswriter import CUSTOM, EXTENDED, MX, MY, R0, R90, R180, R270, Library, turned
from smallchip_cells import PAD_DEPTH, PAD_PITCH, ROW_HEIGHT, TRACK, WIRE, column

ROWS, ROW_TRACKS = 8, 130
CORE_WIDTH, CORE_HEIGHT = ROW_TRACKS * TRACK, ROWS * ROW_HEIGHT
CHANNEL = 12000  # between the pads and the core, for the supply ring
PADS_ACROSS, PADS_UP = 10, 5
CORE_ORIGIN = PAD_DEPTH + CHANNEL
CHIP_WIDTH = 2 * PAD_DEPTH + PADS_ACROSS * PAD_PITCH
CHIP_HEIGHT = 2 * PAD_DEPTH + PADS_UP * PAD_PITCH
STRAP_COLUMNS = {"VSS": (12, 68, 116), "VDD": (18, 74, 122)}  # metal 2 straps across the core
MEMORY_X = CORE_WIDTH + 4800


class Sequence:
    """A linear congruential generator (constants of Numerical Recipes), so that no library version changes the chip."""

    def __init__(self, seed):
        self.state = seed

    def below(self, limit):
        self.state = (self.state * 1664525 + 1013904223) % 2**32
        return self.state * limit >> 32


class Pin:
    """A point that a net reaches from above: a column of the core and a height."""

    def __init__(self, column_index, y):
        self.column, self.y = column_index, y


def place_core(top, kit, sequence):
    """Fills the rows, every second one upside down so that neighbours share a rail. Returns input and output pins."""
    gates = [kit[name] for name in ("INV", "NAND2", "NOR2", "NAND2", "INV", "DFF")]
    inputs, outputs = [], []

    def place(cell, track, row, flipped):
        turned_over = row % 2 == 1
        orientation = (R180 if flipped else MX) if turned_over else (MY if flipped else R0)
        x = CORE_ORIGIN + (track + (cell.tracks if flipped else 0)) * TRACK
        y = CORE_ORIGIN + (row + (1 if turned_over else 0)) * ROW_HEIGHT
        top.place(cell.structure, (x, y), orientation)
        pin_y = row * ROW_HEIGHT + (ROW_HEIGHT - cells.PIN_Y if turned_over else cells.PIN_Y)
        for pins, found in ((cell.inputs, inputs), (cell.outputs, outputs)):
            for index in pins.values():
                found.append(Pin(track + (cell.tracks - 1 - index if flipped else index), pin_y))

    for row in range(ROWS):
        place(kit["TAP"], 0, row, False)
        place(kit["TAP"], ROW_TRACKS - 2, row, True)
        track, end = 2, ROW_TRACKS - 2
        while track < end:
            cell = gates[sequence.below(len(gates))]
            if sequence.below(8) == 0 or track + cell.tracks > end:
                cell = kit["FILL"]
            place(cell, track, row, sequence.below(2) == 1)
            track += cell.tracks
    return inputs, outputs


class Router:
    """Trunks on metal 3 tracks, branches on metal 2 columns; both remember what is taken, in core coordinates."""

    SPACE = 600

    def __init__(self, top, via12, via23):
        self.top, self.via12, self.via23 = top, via12, via23
        self.columns = {index: [] for index in range(ROW_TRACKS)}
        self.tracks = {index: [] for index in range(ROWS * ROW_HEIGHT // TRACK)}
        for reserved in STRAP_COLUMNS.values():
            for middle in reserved:
                for index in (middle - 1, middle, middle + 1):
                    del self.columns[index]

    def _free(self, taken, low, high):
        return taken is not None and all(high < first - self.SPACE or low > last + self.SPACE for first, last in taken)

    def _fits(self, track, pins, x_ends):
        xs = [column(pin.column) for pin in pins] + x_ends
        if not self._free(self.tracks[track], min(xs) - WIRE // 2, max(xs) + WIRE // 2):
            return False
        return all(self._free(self.columns.get(pin.column), *self._branch(pin, track)) for pin in pins)

    def _branch(self, pin, track):
        y = column(track)
        return min(pin.y, y) - WIRE // 2, max(pin.y, y) + WIRE // 2

    def route(self, pins, x_ends=(), track=None):
        """Joins the pins; `x_ends` are more points of the trunk. Keeps to `track` where given. False without room."""
        x_ends = list(x_ends)
        if len({pin.column for pin in pins}) < len(pins):
            return False
        middle = sorted(pin.y for pin in pins)[len(pins) // 2] // TRACK
        choices = [track] if track is not None else sorted(self.tracks, key=lambda index: abs(index - middle))
        for choice in choices:
            if self._fits(choice, pins, x_ends):
                self._draw(choice, pins, x_ends)
                return True
        return False

    def _draw(self, track, pins, x_ends):
        y = column(track)
        xs = [column(pin.column) for pin in pins] + x_ends
        self.tracks[track].append((min(xs) - WIRE // 2, max(xs) + WIRE // 2))
        self._wire(cells.METAL3, (min(xs), y), (max(xs), y))
        for x in x_ends:
            self.top.place(self.via23, (CORE_ORIGIN + x, CORE_ORIGIN + y))
        for pin in pins:
            x = column(pin.column)
            self.columns[pin.column].append(self._branch(pin, track))
            self._wire(cells.METAL2, (x, pin.y), (x, y))
            self.top.place(self.via23, (CORE_ORIGIN + x, CORE_ORIGIN + y))
            if 0 <= pin.y <= CORE_HEIGHT:  # a pad's pin is on metal 2 already
                self.top.place(self.via12, (CORE_ORIGIN + x, CORE_ORIGIN + pin.y))

    def _wire(self, layer, start, end):
        points = [(CORE_ORIGIN + x, CORE_ORIGIN + y) for x, y in (start, end)]
        self.top.path(layer, WIRE, points, EXTENDED)


def take_nearest(pins, column_index, y, jitter=lambda: 0):
    """Removes and returns the pin closest to a place; a branch costs more than a trunk."""
    best = min(pins, key=lambda pin: abs(pin.column - column_index) * TRACK + 2 * abs(pin.y - y) + jitter())
    pins.remove(best)
    return best


def route_core(router, inputs, outputs, sequence):
    """First what has no choice (pads, word lines), then each output. Returns the numbers of nets routed and tried."""
    reachable = lambda pins: [pin for pin in pins if pin.column in router.columns]
    inputs, outputs = reachable(inputs), reachable(outputs)
    results = []
    for row in range(16):
        track = (9600 + 3000 * row + 1500) // TRACK
        pin = take_nearest(outputs, ROW_TRACKS - 1 - row, column(track))
        results.append(router.route([pin], [MEMORY_X + 600], track))
    for pad in range(PADS_UP):
        track = (pad * PAD_PITCH + PAD_PITCH // 2 - CHANNEL) // TRACK
        if track < len(router.tracks):
            pin = take_nearest(inputs, 8, column(track))
            results.append(router.route([pin], [600 - CHANNEL], track))
    for pad in range(PADS_ACROSS):
        index = (pad * PAD_PITCH + PAD_PITCH // 2 - CHANNEL) // TRACK
        if index in router.columns:
            for y in (-CHANNEL, CORE_HEIGHT + CHANNEL):
                pin = take_nearest(inputs, index + 6, y)
                results.append(router.route([Pin(index, y), pin]))
    for output in outputs:
        if not inputs:
            break
        fan_out = min(1 + sequence.below(3), len(inputs))
        loads = [take_nearest(inputs, output.column, output.y, lambda: sequence.below(40000)) for _ in range(fan_out)]
        while loads and not router.route([output] + loads):
            loads.pop()
        results.append(bool(loads))
    return results.count(True), len(results)


def draw_supplies(top, via12, via23):
    """Two rings around the core and the straps that carry them to the rails of the rows."""
    width = 2600
    for net, inset in (("VSS", 2400), ("VDD", 6200)):
        low = PAD_DEPTH + inset + width // 2
        right, upper = CHIP_WIDTH - low, CHIP_HEIGHT - low
        for y in (low, upper):
            top.path(cells.METAL3, width, [(low, y), (right, y)], CUSTOM, width // 2, width // 2)
            top.text(cells.METAL3_LABEL, net, (CHIP_WIDTH // 2, y), 1800)
            for x in (low, right):
                top.place_array(via23, (x - 800, y - 800), 3, 3, (800, 0), (0, 800))
        for x in (low, right):
            top.path(cells.METAL2, width, [(x, low), (x, upper)], EXTENDED)
        for index in STRAP_COLUMNS[net]:
            x = CORE_ORIGIN + column(index)
            top.path(cells.METAL2, 1800, [(x, low - width // 2), (x, upper + width // 2)])
            for y in (low, upper):
                top.place_array(via23, (x - 400, y - 800), 2, 3, (800, 0), (0, 800))
            first = 0 if net == "VSS" else ROW_HEIGHT
            rails = ROWS // 2 + (1 if net == "VSS" else 0)
            top.place_array(via12, (x - 400, CORE_ORIGIN + first), 2, rails, (800, 0), (0, 2 * ROW_HEIGHT))


def draw_pad_ring(top, pad, corner):
    """Each side is one array of pads, turned so that the openings face outwards; each pad gets its name."""
    across, up = PADS_ACROSS * PAD_PITCH, PADS_UP * PAD_PITCH
    sides = (
        ("S", R0, (PAD_DEPTH, 0), (PAD_PITCH, 0), PADS_ACROSS),
        ("E", R90, (CHIP_WIDTH, PAD_DEPTH), (0, PAD_PITCH), PADS_UP),
        ("N", R180, (PAD_DEPTH + across, CHIP_HEIGHT), (-PAD_PITCH, 0), PADS_ACROSS),
        ("W", R270, (0, PAD_DEPTH + up), (0, -PAD_PITCH), PADS_UP),
    )
    for side, orientation, (x, y), step, count in sides:
        depth = turned((0, PAD_DEPTH), orientation)
        top.place_array(pad, (x, y), count, 1, step, depth, orientation)
        dx, dy = turned((PAD_PITCH // 2, 9600), orientation)
        for index in range(count):
            centre = (x + index * step[0] + dx, y + index * step[1] + dy)
            top.text(cells.ANNOTATION, f"{side}{index}", centre, 5000, orientation=orientation)
    for origin, orientation in (((0, 0), R0), ((CHIP_WIDTH, 0), MY), ((CHIP_WIDTH, CHIP_HEIGHT), R180),
                                ((0, CHIP_HEIGHT), MX)):
        top.place(corner, origin, orientation)


def draw_border(top):
    """The seal ring, one closed path, and the chip's name."""
    edge = 4000
    left, bottom, right, upper = -edge, -edge, CHIP_WIDTH + edge, CHIP_HEIGHT + edge
    ring = [(left, bottom), (right, bottom), (right, upper), (left, upper), (left, bottom)]
    for layer in (cells.METAL1, cells.METAL3):
        top.path(layer, 2000, ring, EXTENDED)
    top.box(cells.OUTLINE, left - 3000, bottom - 3000, right + 3000, upper + 3000)
    top.text(cells.ANNOTATION, "SMALLCHIP", (0, upper + 4500), 6000, horizontal=0, vertical=2)
    top.text(cells.ANNOTATION, "example", (CHIP_WIDTH, upper + 4500), 6000, horizontal=2, vertical=2)


def make_chip():
    library = Library("smallchip")
    makers = (cells.make_inverter, cells.make_nand2, cells.make_nor2, cells.make_flip_flop, cells.make_tap,
              cells.make_fill)
    kit = {cell.structure.name: cell for cell in (make(library) for make in makers)}
    via12 = cells.make_via(library, "VIA12", cells.VIA1, cells.METAL1, cells.METAL2)
    via23 = cells.make_via(library, "VIA23", cells.VIA2, cells.METAL2, cells.METAL3)
    memory, inductor, monitor = cells.make_memory(library), cells.make_inductor(library), cells.make_monitor(library)
    pad, corner = cells.make_pad(library), cells.make_corner(library)

    top = library.cell("SMALLCHIP")
    sequence = Sequence(1)
    inputs, outputs = place_core(top, kit, sequence)
    routed, nets = route_core(Router(top, via12, via23), inputs, outputs, sequence)
    draw_supplies(top, via12, via23)
    block_x = CORE_ORIGIN + MEMORY_X
    top.place(memory, (block_x, CORE_ORIGIN))
    top.place(monitor, (block_x, CORE_ORIGIN + 60500))
    top.place(inductor, (block_x + 37500, CORE_ORIGIN + 78000))
    draw_pad_ring(top, pad, corner)
    draw_border(top)
    return library, routed, nets


def main():
    parser = argparse.ArgumentParser(description="Makes the example chip as a GDSII file.")
    parser.add_argument("-o", "--output", type=pathlib.Path, help="default: smallchip.gds beside this script",
                        default=pathlib.Path(__file__).resolve().parent / "smallchip.gds")
    output = parser.parse_args().output
    library, routed, nets = make_chip()
    stream = library.to_bytes()
    output.write_bytes(stream)
    print(f"{output}: {len(library.structures)} cells, {routed} of {nets} nets routed, {len(stream)} bytes")


if __name__ == "__main__":
    main()
