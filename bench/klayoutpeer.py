# Run by klayout: writes, loads and walks the rectangles of workload.cpp as GDSII and prints
#   figures <rectangles found> <write ns> <load ns> <walk ns> <file bytes>
# with times a rectangle. The walk runs inside the program (raw areas are summed up shape by shape); a loop in this script would
# measure the script.

import os
import time

import pya

count = int(count)
layout = pya.Layout()
top = layout.create_cell("top")
shapes = [top.shapes(layout.layer(layer, 0)) for layer in range(16)]
area = 0
for i in range(count):
    left, bottom, width, height = i % 4096 * 100, i // 4096 * 100, 20 + i % 61, 10 + i % 43
    area += width * height
    shapes[i % 16].insert(pya.Box(left, bottom, left + width, bottom + height))

start = time.perf_counter()
layout.write(file)
with open(file, "rb+") as written:
    os.fsync(written.fileno())
write_ns = (time.perf_counter() - start) * 1e9 / count
layout._destroy()

loaded = pya.Layout()
start = time.perf_counter()
loaded.read(file)
load_ns = (time.perf_counter() - start) * 1e9 / count

start = time.perf_counter()
walked = 0
for layer in loaded.layer_indexes():
    region = pya.Region(loaded.top_cell().begin_shapes_rec(layer))
    region.merged_semantics = False
    walked += region.area()
walk_ns = (time.perf_counter() - start) * 1e9 / count

found = sum(loaded.top_cell().shapes(layer).size() for layer in loaded.layer_indexes())
if walked != area:
    raise RuntimeError("the walk found an area of %d, expected %d" % (walked, area))
print("figures", found, write_ns, load_ns, walk_ns, os.path.getsize(file))
