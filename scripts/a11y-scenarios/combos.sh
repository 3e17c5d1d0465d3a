# What Orca says for the non-editable combo boxes: the main window's Vorwahl, the scheduling
# dialog's hour and minute boxes.
step "Main window: from the name box to Vorwahl (Tab), a prefix chosen (Down)"
tree action "text=Empfängername" SetFocus >/dev/null
sleep 1
mark
key Tab
heard
tree dump --from "#0.2" --depth 0
key Down
sleep 1
heard
tree dump --from "#0.2" --depth 0

step "A number typed, back to Vorwahl (shift+Tab), the next prefix (Down)"
typetext 1234567
mark
key shift+Tab
heard
tree dump --from "#0.2" --depth 0

step "Terminversand: the boxes of the dialog, Tab by Tab"
tree action "push button=Terminversand" SetFocus >/dev/null
key space
sleep 2
tree dump --from "dialog=Terminversand" --depth 3 > "$A11Y_OUT/terminversand-tree.txt"
grep "combo box" "$A11Y_OUT/terminversand-tree.txt" | head -20
mark
for _ in 1 2 3 4; do key Tab; done
heard
step "The minute box: the previous minute (Up)"
key Up
heard
tree find "#1.1.2"
step "The minute box: its list opened (alt+Down), Up, Return"
key alt+Down
heard
key Up
heard
key Return
heard
tree find "#1.1.2"
