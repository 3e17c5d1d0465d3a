# The first-start wizard from the keyboard alone (run with A11Y_FIRST_START=1): what is heard at
# its start, on its form page, in its fields the first time Tab reaches them, and when it is sent
# with empty fields, and a typed password.
step "The wizard at start"
mark
sleep 4
heard
tree apps
tree find "push button=Weiter >>"
step "Weiter >> (Return): the form page"
mark
key Return
sleep 2
heard
step "Tab to the fields: eMail and Kennwort the first time"
mark
key Tab
key Tab
key Tab
key Tab
heard
step "Sent with empty fields: the focus goes to the first marked field"
tree action "push button=Kontodaten überprüfen und anmelden" SetFocus >/dev/null
mark
key space
sleep 2
heard
step "The password typed: heard as bullets, not as its letters"
tree action "password text=Kennwort" SetFocus >/dev/null
sleep 1
mark
typetext "geheim"
sleep 1
heard
