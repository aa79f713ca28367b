"""Puts the figures of a run of search_bench beside those that are kept; see compare.sh."""

import json
import sys

# A run of the same program differs by so much from the next one.
SLOWER = 1.10


def measured(path):
    """Name: processor milliseconds (p50, p99)."""
    with open(path, encoding="utf-8") as file:
        runs = json.load(file)["benchmarks"]
    return {
        "/".join(run["name"].split("/")[:-2]): (run["cpu_p50"], run["cpu_p99"])
        for run in runs
    }


def kept(path, tracks):
    """Name: ratios to a memory pass (p50, p99)."""
    figures = {}
    try:
        with open(path, encoding="utf-8") as file:
            for line in file:
                fields = line.split()
                if len(fields) >= 4 and fields[0] == tracks:
                    figures[fields[1]] = (float(fields[2]), float(fields[3]))
    except FileNotFoundError:
        pass
    return figures


def others(path, tracks):
    """The lines of other sizes, and the page's head."""
    try:
        with open(path, encoding="utf-8") as file:
            return [line for line in file if line.split()[:1] != [tracks]]
    except FileNotFoundError:
        return ["# tracks, search, p50 and p99 in memory passes; written by compare.sh --keep\n"]


def main():
    result, page, tracks, keep = sys.argv[1:]
    figures = measured(result)
    memory = figures.pop("yardstick/memory")[0]
    sqlite = figures.pop("yardstick/sqlite")[0]
    former = kept(page, tracks)
    print(f"{tracks} tracks; a memory pass {memory:.2f} ms, SQLite alone {sqlite:.0f} ms of cpu")
    print(f"{'':18}{'ms p50':>9}{'p99':>9}{'passes p50':>12}{'p99':>8}"
          f"{'kept p50':>10}{'p99':>8}{'of SQLite':>11}")
    slower = []
    lines = []
    for name, (middle, high) in figures.items():
        ratios = (middle / memory, high / memory)
        before = former.get(name)
        is_slower = before and any(now > SLOWER * old for now, old in zip(ratios, before))
        slower += [name] if is_slower else []
        told = f"{before[0]:10.2f}{before[1]:8.2f}" if before else f"{'-':>10}{'-':>8}"
        print(f"{name:18}{middle:9.2f}{high:9.2f}{ratios[0]:12.2f}{ratios[1]:8.2f}{told}"
              f"{middle / sqlite:11.5f}{'  SLOWER' if is_slower else ''}")
        lines.append(f"{tracks} {name} {ratios[0]:.2f} {ratios[1]:.2f}\n")
    if keep == "yes":
        head = others(page, tracks)
        with open(page, "w", encoding="utf-8") as file:
            file.writelines(head + lines)
    return 1 if slower and keep != "yes" else 0


if __name__ == "__main__":
    sys.exit(main())
