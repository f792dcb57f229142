#!/bin/sh
# Opens the desktop's terminal.
for program in x-terminal-emulator gnome-terminal konsole xfce4-terminal mate-terminal lxterminal qterminal xterm; do
    if command -v "$program" >/dev/null 2>&1; then
        exec "$program"
    fi
done
echo "No terminal is installed. Looked for: x-terminal-emulator gnome-terminal konsole xfce4-terminal mate-terminal lxterminal qterminal xterm." >&2
exit 1
