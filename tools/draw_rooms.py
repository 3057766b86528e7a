#!/usr/bin/env python3
"""Draws the rooms of the repository and the arrows between them, as SVG.

Usage: draw_rooms.py            prints the picture
       draw_rooms.py PICTURE    fails if the file PICTURE is not what it would print

Standard input names the includes, one a line: the file that includes, and the one that is included,
as `awk -v list=1 -f check-includes.awk` prints them. Tests are left out. The same includes give the
same picture, byte for byte, whatever their order.

A room is a folder; a piece is what the architecture calls one. Inside a piece arrows run between its
rooms, outside between pieces. What is included stands below what includes it. Arrows that follow
from others are left out, or nobody could see the rest. Where rooms include each other in a circle,
the arrow with the fewest includes is dashed and points upwards.
"""

import sys
from collections import defaultdict
from xml.sax.saxutils import escape

PIECES = {
    "platform/utils": ("utils", "#e3edf7"),
    "platform/framework": ("framework", "#e3f1e6"),
    "plugins/s7": ("plugins/s7", "#fbeedc"),
    "workbench/core": ("workbench/core", "#ece6f5"),
    "workbench/cli": ("workbench/cli", "#f6e4e8"),
    "workbench/gui": ("workbench/gui", "#f8f3d8"),
    "bench": ("bench", "#ececec"),
}

ROOM_HEIGHT = 32
ROOM_GAP = 22
LAYER_GAP = 38
PIECE_GAP = 64
PADDING = 22
TITLE_HEIGHT = 30
LETTER = 7.2  # the width of a letter of a room's name
MARGIN = 24


def piece_of(path):
    """The folder of the piece that a file belongs to, or None for what is not drawn."""
    if "/tests/" in path or path.startswith("tests/"):
        return None
    return next((piece for piece in PIECES if path.startswith(piece + "/")), None)


def room_of(path, piece):
    """The room of a file inside its piece; headers and sources of a library share theirs."""
    folders = path[len(piece) + 1 :].split("/")[:-1]
    if folders[:1] == ["src"]:
        folders = folders[1:]
    elif folders[:1] == ["include"]:
        folders = folders[3:]
    return "/".join(folders)


# --- Graphs: a node is any value that sorts, arrows are a set of pairs ------------------------------


def without_circles(weights):
    """The arrows, heaviest first, but those that would close a circle."""
    kept = set()
    for arrow in sorted(weights, key=lambda pair: (-weights[pair], pair)):
        if arrow[0] not in reached(kept, arrow[1]):
            kept.add(arrow)
    return kept


def reached(arrows, start):
    """Every node to which a road leads from `start`, itself included."""
    below = defaultdict(list)
    for source, target in arrows:
        below[source].append(target)
    seen, waiting = {start}, [start]
    while waiting:
        for target in below[waiting.pop()]:
            if target not in seen:
                seen.add(target)
                waiting.append(target)
    return seen


def without_implied(arrows):
    """Takes those arrows away that follow from others; there must be no circle."""
    return {
        (source, target)
        for source, target in arrows
        if target not in reached(arrows - {(source, target)}, source)
    }


def layers_of(nodes, arrows):
    """How high each node stands: above everything that it points at, as low as that allows."""
    height = {}

    def measure(node):
        if node not in height:
            below = [measure(target) for source, target in arrows if source == node]
            height[node] = 1 + max(below, default=-1)
        return height[node]

    for node in nodes:
        measure(node)
    return height


# --- Places --------------------------------------------------------------------------------------


class Layout:
    """Places nodes of given sizes in layers, with few crossings.

    An arrow that passes a layer gets a bend in it, a node without a size, so that it does not run
    through what stands there. Afterwards `x` and `y` are the middles of nodes and bends, `span` the
    upper and lower edges of the layers that they are in, `road` the nodes along each arrow, `width`
    and `height` the size of it all.
    """

    def __init__(self, sizes, arrows, gap, layer_gap):
        self.sizes = dict(sizes)
        self.gap = gap
        heights = layers_of(sorted(sizes), arrows)
        self.layers = [[] for _ in range(1 + max(heights.values()))]
        for node in sorted(sizes):
            self.layers[heights[node]].append(node)
        self.below, self.above, self.road = defaultdict(list), defaultdict(list), {}
        for source, target in sorted(arrows):
            self.road[source, target] = self._bend(source, target, heights)
        self._reduce_crossings()
        self._place(layer_gap)

    def _bend(self, source, target, heights):
        road = [source]
        for layer in range(heights[source] - 1, heights[target], -1):
            bend = (str(source), str(target), layer)
            self.sizes[bend] = (0, 0)
            self.layers[layer].append(bend)
            road.append(bend)
        road.append(target)
        for upper, lower in zip(road, road[1:]):
            self.below[upper].append(lower)
            self.above[lower].append(upper)
        return road

    def _crossings(self):
        count = 0
        for layer, lower in zip(self.layers[1:], self.layers):
            place = {node: i for i, node in enumerate(lower)}
            ends = [sorted(place[target] for target in self.below[node]) for node in layer]
            passed = []
            for group in ends:
                count += sum(end < before for end in group for before in passed)
                passed += group
        return count

    def _reduce_crossings(self):
        best, fewest = [list(layer) for layer in self.layers], self._crossings()
        for sweep in range(24):
            up = sweep % 2 == 0
            neighbours = self.below if up else self.above
            pairs = list(zip(self.layers[1:], self.layers))
            pairs = pairs if up else [(lower, upper) for upper, lower in reversed(pairs)]
            for layer, fixed in pairs:
                place = {node: i / max(1, len(fixed) - 1) for i, node in enumerate(fixed)}
                own = {node: i / max(1, len(layer) - 1) for i, node in enumerate(layer)}
                # Stable, so that nodes of one weight keep their order.
                layer.sort(key=lambda node: mean([place[n] for n in neighbours[node]], own[node]))
            if self._crossings() < fewest:
                best, fewest = [list(layer) for layer in self.layers], self._crossings()
        self.layers = best

    def _place(self, layer_gap):
        self.x, self.y, self.span = {}, {}, {}
        for layer in self.layers:
            self._spread(layer, {node: 0.0 for node in layer})
        for sweep in range(40):
            neighbours = self.below if sweep % 2 == 0 else self.above
            for layer in self.layers:
                wanted = {
                    node: mean([self.x[n] for n in neighbours[node]], self.x[node])
                    for node in layer
                }
                self._spread(layer, wanted)
        left = min(self.x[node] - self.sizes[node][0] / 2 for node in self.x)
        for node in self.x:
            self.x[node] -= left
        self.width = max(self.x[node] + self.sizes[node][0] / 2 for node in self.x)
        top = 0.0
        for layer in reversed(self.layers):
            tallest = max(self.sizes[node][1] for node in layer)
            for node in layer:
                self.y[node] = top + tallest / 2
                self.span[node] = (top, top + tallest)
            top += tallest + layer_gap
        self.height = top - layer_gap

    def _spread(self, layer, wanted):
        """Gives each node of a layer a place near the wanted one, in their order and apart.

        Nodes that would overlap form a block, which stands where its nodes want to be on average.
        """
        blocks = []  # [nodes, their offsets, the place of the first]
        for node in layer:
            block = [[node], [0.0], wanted[node]]
            while blocks and blocks[-1][2] + blocks[-1][1][-1] + self._apart(
                blocks[-1][0][-1], block[0][0]
            ) > block[2]:
                before = blocks.pop()
                shift = before[1][-1] + self._apart(before[0][-1], block[0][0])
                nodes = before[0] + block[0]
                offsets = before[1] + [shift + offset for offset in block[1]]
                place = mean([wanted[n] - offset for n, offset in zip(nodes, offsets)], 0.0)
                block = [nodes, offsets, place]
            blocks.append(block)
        for nodes, offsets, place in blocks:
            for node, offset in zip(nodes, offsets):
                self.x[node] = place + offset

    def _apart(self, left, right):
        return (self.sizes[left][0] + self.sizes[right][0]) / 2 + self.gap


def mean(values, otherwise):
    return sum(values) / len(values) if values else otherwise


# --- Drawing -------------------------------------------------------------------------------------


def arrow(layout, road, dx, dy, style):
    """An arrow from the lower edge of its source to the upper edge of its target.

    It bends between the layers only, where nothing else stands.
    """
    first, last = road[0], road[-1]
    path = f"M{layout.x[first] + dx:.0f} {layout.y[first] + layout.sizes[first][1] / 2 + dy:.0f}"
    for upper, lower in zip(road, road[1:]):
        x1, y1 = layout.x[upper] + dx, layout.span[upper][1] + dy
        x2, y2 = layout.x[lower] + dx, layout.span[lower][0] + dy
        middle = (y1 + y2) / 2
        path += f" V{y1:.0f} C{x1:.0f} {middle:.0f} {x2:.0f} {middle:.0f} {x2:.0f} {y2:.0f}"
    path += f" V{layout.y[last] - layout.sizes[last][1] / 2 + dy:.0f}"
    return f'<path class="{style}" d="{path}"/>'


def box(x, y, width, height, style, fill=""):
    paint = f' fill="{fill}"' if fill else ""
    return (
        f'<rect class="{style}" x="{x:.0f}" y="{y:.0f}" width="{width:.0f}" '
        f'height="{height:.0f}" rx="5"{paint}/>'
    )


def text(x, y, style, content):
    return f'<text class="{style}" x="{x:.0f}" y="{y:.0f}">{escape(content)}</text>'


class Piece:
    """The rooms of one piece, placed."""

    def __init__(self, folder, rooms, includes):
        self.title, self.fill = PIECES[folder]
        self.rooms = sorted(rooms)
        arrows = without_circles(includes)
        circles = set(includes) - arrows
        self.down = without_implied(arrows)
        self.up = {(target, source) for source, target in circles}
        sizes = {
            room: (max(72, 24 + LETTER * len(self._name(room))), ROOM_HEIGHT) for room in rooms
        }
        self.layout = Layout(sizes, self.down | self.up, ROOM_GAP, LAYER_GAP)
        self.width = max(self.layout.width, 10 * len(self.title)) + 2 * PADDING
        self.height = self.layout.height + 2 * PADDING + TITLE_HEIGHT

    def _name(self, room):
        return room if room else self.title.split("/")[-1]

    def draw(self, left, top):
        yield box(left, top, self.width, self.height, "piece", self.fill)
        yield text(left + PADDING, top + TITLE_HEIGHT, "title", self.title)
        dx = left + (self.width - self.layout.width) / 2
        dy = top + PADDING + TITLE_HEIGHT
        for ends in sorted(self.down):
            yield arrow(self.layout, self.layout.road[ends], dx, dy, "arrow")
        for ends in sorted(self.up):
            aside = 12 if ends in self.down else 0
            yield arrow(self.layout, self.layout.road[ends], dx + aside, dy, "circle")
        for room in self.rooms:
            width, height = self.layout.sizes[room]
            x, y = self.layout.x[room] + dx, self.layout.y[room] + dy
            yield box(x - width / 2, y - height / 2, width, height, "room")
            yield text(x, y + 4, "name", self._name(room))


STYLE = """
  text { font-family: sans-serif; text-anchor: middle; fill: #222 }
  .title { font-size: 16px; font-weight: bold; text-anchor: start }
  .name { font-size: 13px }
  .piece { stroke: #999 }
  .room { fill: #fff; stroke: #666 }
  .arrow { fill: none; stroke: #555; stroke-width: 1.2; marker-end: url(#head) }
  .circle { fill: none; stroke: #b03030; stroke-dasharray: 4 3; marker-start: url(#head) }
  .wide { fill: none; stroke: #333; stroke-width: 2.5; marker-end: url(#head) }
"""


def read(lines):
    """The rooms of each piece, how many includes run between them, and the arrows of the pieces."""
    rooms = defaultdict(set)
    inside = defaultdict(lambda: defaultdict(int))
    between = set()
    for source, target in map(str.split, lines):
        from_piece, to_piece = piece_of(source), piece_of(target)
        if from_piece is None or to_piece is None:
            continue
        from_room, to_room = room_of(source, from_piece), room_of(target, to_piece)
        rooms[from_piece].add(from_room)
        rooms[to_piece].add(to_room)
        if from_piece != to_piece:
            between.add((from_piece, to_piece))
        elif from_room != to_room:
            inside[from_piece][from_room, to_room] += 1
    return rooms, inside, between


def draw(lines):
    rooms, inside, between = read(lines)
    pieces = {folder: Piece(folder, rooms[folder], inside[folder]) for folder in sorted(rooms)}
    sizes = {folder: (piece.width, piece.height) for folder, piece in pieces.items()}
    whole = Layout(sizes, without_implied(between), PIECE_GAP, PIECE_GAP)
    width, height = whole.width + 2 * MARGIN, whole.height + 2 * MARGIN
    yield (
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width:.0f} {height:.0f}" '
        f'width="{width:.0f}" height="{height:.0f}">'
    )
    yield f"<style>{STYLE}</style>"
    yield (
        '<defs><marker id="head" viewBox="0 0 8 8" refX="7" refY="4" markerWidth="8" '
        'markerHeight="8" markerUnits="userSpaceOnUse" orient="auto-start-reverse">'
        '<path d="M0 0L8 4L0 8z" fill="#444"/></marker></defs>'
    )
    yield '<rect width="100%" height="100%" fill="#fff"/>'
    for _, road in sorted(whole.road.items()):
        yield arrow(whole, road, MARGIN, MARGIN, "wide")
    for folder in sorted(pieces):
        piece = pieces[folder]
        left = whole.x[folder] - piece.width / 2 + MARGIN
        yield from piece.draw(left, whole.y[folder] - piece.height / 2 + MARGIN)
    yield "</svg>"


def main(pictures):
    drawn = "".join(part + "\n" for part in draw(sys.stdin))
    if not pictures:
        sys.stdout.write(drawn)
        return 0
    try:
        with open(pictures[0], encoding="utf-8") as file:
            stands = file.read()
    except OSError as error:
        stands = str(error)
    if stands != drawn:
        print(f"{pictures[0]} does not show the includes as they are", file=sys.stderr)
    return stands != drawn


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
