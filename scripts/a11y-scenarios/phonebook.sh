# The phonebook page as a screen reader finds it, and its links pressed three ways: the
# accessibility action, the keyboard (focus, Return), and what the recipient fields then hold.
# Run with A11Y_WEBENGINE=1 to set QTWEBENGINE_ENABLE_LINUX_ACCESSIBILITY for the client.
fields() {
    tree find "combo box=Empfängername > text" | sed 's/^/  name field: /'
    tree find "text=Rufnummer" | sed 's/^/  number field: /'
    tree find "#0.2" | sed 's/^/  prefix box: /'
}

step "The phonebook opened (Öffnet das Telefonbuch, space)"
tree action "push button=Öffnet das Telefonbuch" SetFocus >/dev/null
mark
key space
sleep 8
tree apps
heard
tree dump --rows --from "=Telefonbuch" > "$A11Y_OUT/phonebook-tree.txt"
echo "(tree: $(wc -l < "$A11Y_OUT/phonebook-tree.txt") objects)"
grep -E "\[(link|document web|document frame|internal frame|panel|section)\]" "$A11Y_OUT/phonebook-tree.txt" | head -30

step "Going from entry to entry with Tab: names and numbers"
mark
key Tab
sleep 1
key Tab
sleep 1
heard
key shift+Tab
key shift+Tab

step "The link to Max Mustermann: its actions, and each one done"
fields
tree find "link=Max Mustermann, 00491711234567"
tree action "link=Max Mustermann, 00491711234567"
sleep 3
fields
heard
step "The same link by the keyboard: focused by its action SetFocus, then Return"
tree action "link=Max Mustermann, 00491711234567" SetFocus >/dev/null
sleep 1
mark
key Return
sleep 3
fields
heard
tree apps

step "The phonebook again; the link to Sepp Gruber as a mouse click"
activate Quellbote
tree action "push button=Öffnet das Telefonbuch"
sleep 6
/usr/bin/python3 - <<'PY'
import subprocess
import pyatspi
app = [a for a in pyatspi.Registry.getDesktop(0) if a and a.name == "Quellbote"][-1]
def find(obj):
    for child in obj:
        if child is None:
            continue
        if child.getRoleName() == "link" and child.name.startswith("Sepp Gruber"):
            return child
        hit = find(child)
        if hit:
            return hit
link = find(app)
x, y, w, h = link.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
print("link at", x, y, w, h)
subprocess.run(["xdotool", "mousemove", str(x + w // 2), str(y + h // 2), "click", "1"])
PY
sleep 3
fields
heard
