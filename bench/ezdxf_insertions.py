"""Insertions of a block with three attributes a second by ezdxf, for insertion_bench; prints the number."""

import time

import ezdxf

HELD = 10_000
TIMED = 5_000
REPETITIONS = 3


def insert(space, count):
    for i in range(count):
        reference = space.add_blockref("DESK", (i + 0.25, i % 100 + 0.5))
        reference.add_auto_attribs({"NAME": "desk", "SIZE": "1600 x 800", "PRICE": "420"})


def main():
    drawing = ezdxf.new("R2000")
    block = drawing.blocks.new("DESK")
    for tag, y in (("NAME", 20), ("SIZE", 16), ("PRICE", 12)):
        block.add_attdef(tag, (10, y), dxfattribs={"height": 2.5})
    space = drawing.modelspace()
    insert(space, HELD)
    best = float("inf")
    for _ in range(REPETITIONS):
        start = time.perf_counter()
        insert(space, TIMED)
        best = min(best, time.perf_counter() - start)
    print(TIMED / best)


if __name__ == "__main__":
    main()
