# Whether the accessibility actions reach the program: "Toggle" on the scheduling dialog's option
# buttons (also on the one already chosen), "Press" on the MultiSMS window's tool buttons.
panes() {
    for selector in "check box~Wiederholung" "check box" "radio button=Täglich" "radio button=Monatlich" "radio button=Jährlich" \
        "radio button=Jeden Tag senden" "radio button=An jedem" "radio button=Jeden"; do
        tree find "dialog=Terminversand > $selector" 2>/dev/null | head -1 | sed "s/^/  /"
    done
}
step "Terminversand opened"
tree action "push button=Terminversand" SetFocus >/dev/null
key space
sleep 2
tree dump --from "dialog=Terminversand" --depth 2 | grep -E "check box|radio|panel|filler" | head -20
panes

step "Wiederholung: Toggle"
tree action "dialog=Terminversand > check box" Toggle
sleep 1
panes

for b in Monatlich Monatlich Jährlich Täglich Täglich; do
    step "Toggle on $b"
    tree action "dialog=Terminversand > radio button=$b" Toggle
    sleep 1
    panes
done
key Escape
sleep 1

step "MultiSMS: a row, then the tool buttons Neu, Öffnen, Speichern by their action"
tree action "push button=MultiSMS"
sleep 3
tree action "text=Name" SetFocus >/dev/null
typetext "Anna"
tree action "text=Nummer" SetFocus >/dev/null
typetext "00491711234567"
tree action "push button=Hinzufügen"
sleep 1
tree find "text=Anzahl Einträge"
tree dump --from "filler=MultiSMS" --depth 2 2>/dev/null | grep -E "tool bar|push button" | head -12
tree dump --from "frame=MultiSMS" --depth 2 2>/dev/null | grep -E "tool bar|push button" | head -12
mark
time tree action "push button=Neu"
sleep 2
tree apps
heard
key Return
sleep 1
tree find "text=Anzahl Einträge"
for b in Öffnen Speichern; do
    step "$b"
    mark
    time tree action "push button=$b"
    sleep 3
    tree apps
    heard
    key Escape
    sleep 1
done
