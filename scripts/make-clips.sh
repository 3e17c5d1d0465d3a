#!/usr/bin/env bash
# Draws the looping clips the windows play while they wait (ids 101 to 104) as animated GIFs:
# a ring of twelve dots with a bright one running round, in the colour of each window's head.
# Run once after changing the drawing; the GIFs are kept in the repository.
set -euo pipefail
cd "$(dirname "$0")/../src/resources/clips"
draw_clip() {
    local id=$1 colour=$2 frames=()
    for step in $(seq 0 11); do
        local args=()
        for dot in $(seq 0 11); do
            local angle x y fill
            angle=$(echo "$dot * 30 * 3.14159265 / 180" | bc -l)
            x=$(printf '%.1f' "$(echo "24 + 16 * s($angle)" | bc -l)")
            y=$(printf '%.1f' "$(echo "24 - 16 * c($angle)" | bc -l)")
            # The dot of this frame is bright, the two behind it fade out.
            case $(((step - dot + 12) % 12)) in
                0) fill="$colour" ;;
                1) fill="${colour}b0" ;;
                2) fill="${colour}60" ;;
                *) fill="#d0d4dc" ;;
            esac
            args+=(-fill "$fill" -draw "circle $x,$y $(echo "$x + 3.2" | bc -l),$y")
        done
        convert -size 48x48 xc:none "${args[@]}" "frame$step.png"
        frames+=("frame$step.png")
    done
    convert -delay 8 -loop 0 -dispose background "${frames[@]}" "$id.gif"
    rm -f frame*.png
}
draw_clip 101 '#1f5fae'
draw_clip 102 '#2e8b57'
draw_clip 103 '#6a4caf'
draw_clip 104 '#c0392b'
