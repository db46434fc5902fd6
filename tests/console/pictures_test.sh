#!/bin/sh
# pictures_test.sh QUOMC QUOM PROGRAM_FOLDER FOLDER: quomc draws every kind of picture by quom beside it, without a
# display. Each file begins as its format says and has the size asked for; nothing else is left behind.
set -u
quomc=$1 quom=$2 data=$3 folder=$4
rm -rf "$folder"
mkdir -p "$folder/bin" "$folder/tmp" "$folder/out"
cp "$quomc" "$folder/bin/quomc"
cp "$quom" "$folder/bin/quom"
unset DISPLAY WAYLAND_DISPLAY
TMPDIR=$folder/tmp
export TMPDIR
faults=0
fault() {
    echo "FAULT: $1"
    faults=$((faults + 1))
}
run() { "$folder/bin/quomc" --program-folder "$data" "$@" >"$folder/said" 2>"$folder/error"; }
left() { find "$folder/tmp" -name "quomc*"; }
first() { od -An -tx1 -j "$2" -N "$3" "$folder/out/$1" | tr -d ' \n'; }

diagram="diagram propane --kind 1 --curves T=300,340 --x 0.05:2 --y 0:6000 --coexistence --dens 50"
chart="chart propane --kind ph --ref 0C"
for what in diagram chart; do
    eval "line=\$$what"
    for format in svg pdf png emf wmf bmp; do
        # shellcheck disable=SC2086
        run $line --size 120x80 --dpi 100 --out "$folder/out/$what.$format" || fault "$what.$format: $(cat "$folder/error")"
    done
    case $(first "$what.svg" 0 5) in 3c3f786d6c | 3c73766720) ;; *) fault "$what.svg" ;; esac
    grep -q "</svg>" "$folder/out/$what.svg" || fault "$what.svg has no end"
    [ "$(first "$what.pdf" 0 4)" = 25504446 ] || fault "$what.pdf"
    [ "$(first "$what.png" 0 8)" = 89504e470d0a1a0a ] || fault "$what.png"
    # 120 mm at 100 dpi: 472 pixels
    [ "$(first "$what.png" 16 4)" = 000001d8 ] || fault "width of $what.png: $(first "$what.png" 16 4)"
    [ "$(first "$what.emf" 0 4)" = 01000000 ] && [ "$(first "$what.emf" 40 4)" = 20454d46 ] || fault "$what.emf"
    [ "$(first "$what.wmf" 0 4)" = d7cdc69a ] || fault "$what.wmf"
    [ "$(first "$what.bmp" 0 2)" = 424d ] || fault "$what.bmp"
done

# The curves of the sheet come in the colours of their slots, and another picture for another parameter.
# shellcheck disable=SC2086
run $diagram --title Other --out "$folder/out/other.svg" || fault "other.svg"
grep -q Other "$folder/out/other.svg" || fault "the title is missing in other.svg"
cmp -s "$folder/out/diagram.svg" "$folder/out/other.svg" && fault "two sheets in one picture"

# What quom says comes through, with its status.
# shellcheck disable=SC2086
run $diagram --out "$folder/none/x.png"
[ $? = 3 ] || fault "a folder that is not there: status"
grep -q "No such file" "$folder/error" || fault "a folder that is not there: $(cat "$folder/error")"
printf '#!/bin/sh\necho "quom: It is so." >&2\nexit 2\n' >"$folder/bin/quom"
# shellcheck disable=SC2086
run $diagram --out "$folder/out/x.png"
[ $? = 2 ] && grep -q "diagram: It is so\\." "$folder/error" || fault "the sentence of quom: $(cat "$folder/error")"
printf '#!/bin/sh\nkill -9 $$\n' >"$folder/bin/quom"
# shellcheck disable=SC2086
run $diagram --out "$folder/out/x.png"
[ $? = 3 ] && grep -q "signal 9" "$folder/error" || fault "quom that is killed: $(cat "$folder/error")"
# Ended while quom draws: the sheet in the temporary folder goes.
printf '#!/bin/sh\nexec sleep 2\n' >"$folder/bin/quom"
# shellcheck disable=SC2086
"$folder/bin/quomc" --program-folder "$data" $diagram --out "$folder/out/x.png" 2>/dev/null &
waited=0
while [ -z "$(left)" ] && [ $waited -lt 100 ]; do
    sleep 0.1
    waited=$((waited + 1))
done
[ -n "$(left)" ] || fault "no sheet for quom"
kill $!
wait $! 2>/dev/null
rm "$folder/bin/quom"
# shellcheck disable=SC2086
run $diagram --out "$folder/out/x.png"
[ $? = 3 ] && grep -q "pictures need the program quom beside quomc" "$folder/error" || fault "without quom"
[ -e "$folder/out/x.png" ] && fault "a picture without quom"
[ -z "$(left)" ] || fault "left behind: $(left)"
[ "$(ls "$folder/out" | wc -l)" = 13 ] || fault "files: $(ls "$folder/out")"
[ $faults = 0 ] && rm -rf "$folder" && echo "all pictures are there"
[ $faults = 0 ]
