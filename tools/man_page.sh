#!/usr/bin/env bash
# Writes the manual pages of one program from what it prints itself:
#   tools/man_page.sh PROGRAM FOLDER
# makes FOLDER/NAME.1 and FOLDER/NAME.de.1.
set -euo pipefail

program=$1
folder=$2
name=$(basename "$program")
release=$("$program" --version)
mkdir -p "$folder"

# page LOCALE NAME-HEAD SYNOPSIS-HEAD DESCRIPTION-HEAD RESULT-HEAD USAGE-WORD RESULT-WORD
page() {
    LC_ALL=$1 "$program" --help | awk -v name="$name" -v release="$release" -v name_head="$2" \
        -v synopsis_head="$3" -v description_head="$4" -v result_head="$5" -v usage="$6" \
        -v result="$7" '
        function plain(text) {
            gsub(/\\/, "\\e", text)
            gsub(/-/, "\\-", text)
            sub(/^[.\x27]/, "\\\\\\&&", text)
            return text
        }
        function section(head) {
            endVerbatim()
            print ".SH " head
            paragraph = 0
        }
        function startVerbatim() { if (!verbatim) { print ".nf"; verbatim = 1 } }
        function endVerbatim() { if (verbatim) { print ".fi"; verbatim = 0 } }
        NR == 1 {
            what = $0
            sub(/^[^:]*: */, "", what)
            printf ".TH \"%s\" 1 \"\" \"%s\" \"Melovane DB\"\n", name, release
            section(name_head)
            print plain(name) " \\- " plain(what)
            next
        }
        $0 == "" { if (part == "usage") part = ""; gap = 1; next }
        index($0, usage) == 1 {
            section(synopsis_head)
            part = "usage"; hasUsage = 1
            startVerbatim()
            print plain(substr($0, length(usage) + 2))
            gap = 0
            next
        }
        index($0, result) == 1 {
            section(result_head)
            part = "result"
            rest = substr($0, length(result) + 2)
            sub(/^ */, "", rest)
            print plain(rest)
            gap = 0
            next
        }
        part == "usage" { line = $0; sub(/^ */, "", line); print plain(line); next }
        part == "result" { if (gap) { print ".PP"; gap = 0 } print plain($0); next }
        {
            if (part != "text") { section(description_head); part = "text"; gap = 0 }
            if (gap) { endVerbatim(); print ".PP"; gap = 0 }
            if ($0 ~ /^ /) startVerbatim(); else endVerbatim()
            print plain($0)
        }
        END { endVerbatim() }'
}

page C.UTF-8 NAME SYNOPSIS DESCRIPTION "EXIT STATUS" Usage: Result: > "$folder/$name.1"
page de_DE.UTF-8 NAME ÜBERSICHT BESCHREIBUNG RÜCKGABEWERT Aufruf: Ergebnis: > "$folder/$name.de.1"
