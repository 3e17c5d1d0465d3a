# The role and name of every top-level window, and what Orca says as each one comes up.
# Run with A11Y_NEWS=1 so that the news window comes up at start.
step "At start"
sleep 4
tree apps
heard
step "The news window closed (alt+F4)"
key alt+F4
sleep 1
tree apps
heard

step "Terminversand (the main window's button, by keyboard focus and space)"
activate Quellbote
tree action "push button=Terminversand" SetFocus >/dev/null
mark
key space
sleep 2
tree apps
heard
key Escape
sleep 1

step "Einstellungen"
activate Quellbote
tree action "push button=Einstellungen" SetFocus >/dev/null
mark
key space
sleep 3
tree apps
heard
key Escape
sleep 1

step "Hilfe"
activate Quellbote
tree action "push button=Hilfe" SetFocus >/dev/null
mark
key space
sleep 5
tree apps
heard

step "MultiSMS"
activate Quellbote
tree action "push button=MultiSMS" SetFocus >/dev/null
mark
key space
sleep 3
tree apps
heard

step "Bulk log: one row, a text, Senden"
activate MultiSMS
tree action "text=Name" SetFocus >/dev/null
typetext "Anna"
tree action "text=Nummer" SetFocus >/dev/null
typetext "00491711234567"
tree action "push button=Hinzufügen"
activate Quellbote
tree action "text=Nachricht" SetFocus >/dev/null
typetext "Hallo"
mark
tree action "push button=Senden" SetFocus >/dev/null
key space
sleep 4
tree apps
heard
mark
key Return
sleep 5
tree apps
heard
