"""The results of all rows as a table."""
import os
from dataclasses import dataclass

HEAD = ["Row", "Size", "Input MB", "Zarel s", "MB/s", "Peer", "Peer s", "Peer / Zarel",
        "Zarel MiB", "Peer MiB", "Growth", "Figure", "Met"]


@dataclass
class Result:
    row: object
    size: int
    trial: object
    zarel: object
    peer: object     # None: the row has no peer
    small: object    # Zarel at a tenth of the size; None: not measured

    @property
    def megabytes(self):
        return self.trial.input_bytes / 1e6

    @property
    def speed(self):
        return self.megabytes / self.zarel.seconds

    @property
    def ratio(self):
        return self.peer.seconds / self.zarel.seconds

    @property
    def growth(self):
        return self.zarel.seconds / self.small.seconds


def has_peer_figures(result):
    return result.peer is not None and result.peer.problem is None


def figure_cell(result, results):
    """Whether the figure is reached, or why nothing was measured; empty when what it speaks of is
    missing."""
    if result.zarel.problem is not None:
        return result.zarel.problem
    needs_peer = result.row.figure.needs_peer
    if needs_peer and not has_peer_figures(result):
        return ""
    is_met = result.row.figure.holds(result, results)
    return {True: "yes", False: "**no**", None: ""}[is_met]


def peer_cells(result):
    if result.peer is None:
        return ["", "", "", ""]
    name = os.path.basename(result.trial.peer.words[0])
    if result.peer.problem is not None:
        return [name, result.peer.problem, "", ""]
    return [name, seconds(result.peer), f"{result.ratio:.2f}", f"{result.peer.mebibytes:.0f}"]


def seconds(measured):
    return f"{measured.seconds:.3f}" if measured.seconds < 10 else f"{measured.seconds:.1f}"


def cells(result, results):
    name, size = result.row.name, f"{result.size:,}"
    figure = result.row.figure.text
    if result.zarel.problem is not None:
        return [name, size] + [""] * 9 + [figure, figure_cell(result, results)]
    peer, peer_seconds, ratio, peer_memory = peer_cells(result)
    is_measurable = result.small is not None and result.small.problem is None
    return [name, size, f"{result.megabytes:.1f}", seconds(result.zarel), f"{result.speed:.1f}",
            peer, peer_seconds, ratio, f"{result.zarel.mebibytes:.0f}", peer_memory,
            f"{result.growth:.1f}" if is_measurable else "", figure, figure_cell(result, results)]


def as_markdown(results):
    return markdown([HEAD] + [cells(result, results) for result in results.values()])


def markdown(lines):
    """The cells of a table, its head first, as its text."""
    widths = [max(map(len, column)) for column in zip(*lines)]
    lines.insert(1, ["-" * width for width in widths])
    padded = ([cell.ljust(width) for cell, width in zip(line, widths)] for line in lines)
    return "\n".join("| " + " | ".join(line) + " |" for line in padded)
