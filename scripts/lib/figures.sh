# shellcheck shell=sh
# Figures in a page of docs/: written by the command that measured them, between two marks, and
# never by hand. The text around them stays.
#
#   <!-- NAME -->
#   what the command wrote last
#   <!-- end of NAME -->

# figures PAGE NAME: writes what stands between the marks.
figures() {
  NAME=$2 awk '
    $0 == "<!-- end of " ENVIRON["NAME"] " -->" { inside = 0 }
    inside { print }
    $0 == "<!-- " ENVIRON["NAME"] " -->" { inside = 1 }
  ' "$1"
}

# write_figures PAGE NAME: puts standard input between the marks. In one go at the end: an
# interrupted command leaves the page as it was.
write_figures() {
  NAME=$2 PAGE=$1 awk '
    BEGIN { begin = "<!-- " ENVIRON["NAME"] " -->"; end = "<!-- end of " ENVIRON["NAME"] " -->" }
    FILENAME == "-" { block = block $0 "\n"; next }
    $0 == end && inside { printf "%s", block; inside = 0; ended = 1 }
    !inside { print }
    $0 == begin { inside = 1 }
    END {
      if (ended && !inside) exit
      print "figures: no marks of " ENVIRON["NAME"] " in " ENVIRON["PAGE"] >"/dev/stderr"
      exit 1
    }
  ' - "$1" >"$1.new" || { rm -f "$1.new" && return 1; }
  mv "$1.new" "$1"
}

# write_figure_row PAGE NAME ROW: puts a row into the table between the marks, in the place of the
# one with the same first cell if there is one.
write_figure_row() {
  figures "$1" "$2" | ROW=$3 awk '
    function key(row, cells) { split(row, cells, "|"); return cells[2] }
    BEGIN { row = ENVIRON["ROW"] }
    key($0) == key(row) { print row; written = 1; next }
    /^\|/ { in_table = 1 }
    in_table && !/^\|/ && !written { print row; written = 1 }
    { print }
    END { if (!written) print row }
  ' | write_figures "$1" "$2"
}

# figures_origin COMMAND: the sentence that begins a block.
figures_origin() {
  echo "Made by \`$1\` on $(date -u +%Y-%m-%d):" \
    "$(nproc) processors ($(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1))," \
    "Linux $(uname -r | sed 's/-.*//'), CUPS $(dpkg-query -W -f '${Version}' libcups2),"  \
    "$(g++ --version | sed -n 1p)"
}
