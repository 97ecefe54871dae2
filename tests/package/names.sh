# names.sh PREFIX   What the desktop entry names must have been installed with it.
entry=$(echo "$1"/share/applications/*.desktop)
value() { sed -n "s/^$1=//p" "$entry"; }
need() { [ -n "$(find "$1" -name "$2")" ] || { echo "$2 is not below $1"; exit 1; }; }
need "$1/bin" "$(value Exec)"
need "$1/share/icons/hicolor" "$(value Icon).svg"
need "$1/share/icons/hicolor" "$(value Icon).png"
need "$1/share/metainfo" "$(value Icon).metainfo.xml"
