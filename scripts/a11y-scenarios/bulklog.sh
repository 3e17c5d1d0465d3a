# A bulk run of two rows from the keyboard: what a screen reader hears at its end, and the log
# read line by line with the arrow keys and in flat review.
step "MultiSMS: two rows, a text, Senden"
tree action "push button=MultiSMS"
sleep 3
for row in "Anna 00491711234567" "Ben 0049172x"; do
    tree action "text=Name" SetFocus >/dev/null
    typetext "${row% *}"
    tree action "text=Nummer" SetFocus >/dev/null
    typetext "${row#* }"
    tree action "push button=Hinzufügen"
    sleep 1
done
activate Quellbote
tree action "text=Nachricht" SetFocus >/dev/null
typetext "Hallo %name%"
mark
tree action "push button=Senden" SetFocus >/dev/null
key space
sleep 2
heard
step "The question answered with Ja (alt+j), the run"
mark
key alt+j
sleep 6
heard
tree find "frame=Ihre Nachrichten werden verschickt > push button=Schliessen"
step "The log, read with the arrow keys"
tree action "text=Nachrichten vom Gateway" SetFocus >/dev/null
sleep 1
mark
key ctrl+Home
key Down
key Down
key Down
heard
step "Flat review of the log (KP_8 this line, KP_7 the line above): one drawn line at a time"
mark
key KP_Up
key KP_Home
key KP_Home
heard
