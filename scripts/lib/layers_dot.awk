# SPDX-License-Identifier: Apache-2.0
# awk -f layers_dot.awk layers.txt: the table of layers as a graph in the language of graphviz, without
# folders that may include everything and without headers that a folder takes from one above it.
BEGIN {
  FS = " *[|] *"
  print "// Made by scripts/generate from scripts/lib/layers.txt."
  print "digraph layers {"
  print "  node [shape=box, fontname=\"sans-serif\", fontsize=11];"
}
/^#/ || NF != 3 || $2 == "*" { next }
{
  folders[$1]
  printf "  \"%s\";\n", $1
  count = split($2, targets, " ")
  for (i = 1; i <= count; ++i) {
    target = targets[i]
    if (target ~ /^</) {
      if (!seen[target]++) printf "  \"%s\" [shape=ellipse];\n", target
    } else {
      # A header stands for its folder.
      while (!(target in folders) && sub(/\/[^\/]*$/, "", target)) {}
      if (target == $1 || !(target in folders)) continue
    }
    if (!seen[$1, target]++) printf "  \"%s\" -> \"%s\";\n", $1, target
  }
}
END { print "}" }
