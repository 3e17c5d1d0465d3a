# Screenshots of the windows as a user meets them, into $A11Y_OUT: the main window, MultiSMS with
# its editor and its list check, the stop list of the settings, the first-start form is another
# walk. Run with A11Y_ORCA=0 and the desktop's settings to look at (QT_SCALE_FACTOR,
# QT_QPA_PLATFORMTHEME=gtk3 with GTK_THEME=Adwaita:dark, A11Y_GTK_SETTINGS, A11Y_SCREEN).
shot() { sleep 1; import -window root "$A11Y_OUT/$1.png"; echo "screenshot $A11Y_OUT/$1.png"; }
sleep 3
shot main
tree action "push button=MultiSMS"
sleep 3
shot multisms
tree action "push button=Prüfen"
sleep 2
shot listcheck
key Escape
activate Quellbote
tree action "push button=Einstellungen"
sleep 3
tree action "push button=Sperrliste"
sleep 1
shot sperrliste
key Escape
