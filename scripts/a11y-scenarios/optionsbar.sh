# The options bar of the main window: what Orca says of its switches, and a Toggle through
# AT-SPI on "Absenderkennung", which without a sender name brings a box and then the options.
step "Options bar: Tab to Absenderkennung"
tree action "text=Empfängername" SetFocus >/dev/null
mark
key Tab Tab
typetext 1712345
for _ in 1 2 3 4 5 6 7 8; do key Tab; done
heard
tree find "check box=Absenderkennung"
step "Absenderkennung toggled through its action (no sender name: a box, then the options)"
mark
time tree action "check box=Absenderkennung"
sleep 3
tree apps
heard
