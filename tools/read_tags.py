#!/usr/bin/python3
"""Compares what was written into tags with what other readers see: tools/read_tags.py FOLDER

FOLDER holds audio files and values.json: what each file's fields must show. Used by prove_tags.sh.
Ends with 1 when a reader sees anything else.
"""

import json
import pathlib
import subprocess
import sys

from mutagen.id3 import ID3

TEXTS = {"Titel": "TIT2", "Interpret": "TPE1", "Album": "TALB", "Genre": "TCON",
         "Jahr": "TDRC", "Track": "TRCK", "BPM": "TBPM"}
STARS = ((224, "5"), (160, "4"), (96, "3"), (32, "2"), (1, "1"))


def text_of(frames, last_part=False):
    """The values of the first frame; artists and genres of version 2.4 may have several."""
    if not frames:
        return ""
    text = "; ".join(str(value) for value in getattr(frames[0], "text", []))
    return text.split("/")[0] if last_part else text


def stars_of(frames):
    rating = frames[0].rating if frames else 0
    return next((stars for least, stars in STARS if rating >= least), "")


def seen_by_mutagen(tags, field):
    if field in TEXTS:
        return text_of(tags.getall(TEXTS[field]), field == "Track")
    if field == "Kommentar":
        return text_of([frame for frame in tags.getall("COMM") if not frame.desc])
    if field == "Note":
        return stars_of([frame for frame in tags.getall("POPM") if frame.email == "rating@melovane"])
    return text_of([frame for frame in tags.getall("TXXX") if frame.desc.lower() == field.lower()])


def seen_by_ffprobe(path):
    """The texts of the file by the names of that reader, in lower case."""
    told = subprocess.run(
        ["ffprobe", "-v", "error", "-of", "json", "-show_entries", "format_tags", str(path)],
        capture_output=True, check=False)
    tags = json.loads(told.stdout or b"{}").get("format", {}).get("tags", {})
    return {name.lower(): value for name, value in tags.items()}


def main():
    folder = pathlib.Path(sys.argv[1])
    files = json.loads((folder / "values.json").read_text(encoding="utf-8"))
    compared = faults = 0
    for file in files:
        path = folder / file["file"]
        tags = ID3(path)
        other = seen_by_ffprobe(path)
        # This reader takes all sizes of a tag for one kind; a tag that mixes them is beyond it.
        mixed = file["shape"].startswith("plain sizes 2.4")
        for field, value in file["values"].items():
            seen = [] if mixed else [("mutagen", seen_by_mutagen(tags, field))]
            name = {"Titel": "title", "Interpret": "artist", "Album": "album"}.get(field)
            # A field without a text may be shown from the tag at the file's end.
            if name and value:
                seen.append(("ffprobe", other.get(name, "")))
            for reader, text in seen:
                compared += 1
                if text != value:
                    faults += 1
                    print(f"{file['file']} ({file['shape']}): {field} is {text!r} for {reader}, "
                          f"written was {value!r}")
    print(f"{len(files)} files, {compared} values compared, {faults} differ")
    return 1 if faults or not compared else 0


sys.exit(main())
