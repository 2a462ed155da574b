# SPDX-License-Identifier: Apache-2.0
# Reads the table of layers, then lines FILE:LINE:#include …, and names every include that the table
# does not admit.

# The longest row that a path lies below; exported headers are included as "tarnmf/…".
function row_of(path) {
  if (path ~ /^tarnmf\//) return "include"
  while (sub(/\/[^\/]*$/, "", path)) if (path in allowed) return path
  return ""
}

function complain(rule) {
  printf "%s:%s: %s includes %s: %s\n", file, line, file, target, rule > "/dev/stderr"
  ++faults
}

FNR == NR {
  if (/^#/ || NF == 0) next
  if (split($0, cell, / *[|] */) != 3) {
    printf "%s:%d: a row has three cells\n", FILENAME, FNR > "/dev/stderr"
    ++faults
    next
  }
  allowed[cell[1]] = " " cell[1] " " cell[2] " "
  count = split(cell[2], names, " ")
  for (i = 1; i <= count; ++i)
    if (names[i] ~ /^</) guarded[substr(names[i], 2, length(names[i]) - 2)] = 1
  next
}

{
  ++includes
  file = $0; sub(/:.*/, "", file)
  line = $0; sub(/^[^:]*:/, "", line); sub(/:.*/, "", line)
  target = $0; sub(/^[^<"]*[<"]/, "", target); sub(/[>"].*/, "", target)
  quoted = $0 ~ /#[ \t]*include[ \t]*"/

  from = row_of(file)
  if (from == "") { complain("its folder has no row in the table of layers"); next }
  if (index(allowed[from], " * ")) next

  to = row_of(target)
  if (to != "") {
    if (!index(allowed[from], " " to " ") && !index(allowed[from], " " target " "))
      complain(from "/ may include only" substr(allowed[from], length(from) + 2))
  } else if (quoted && from != "examples") {  # each is a project of its own, with headers of its own
    complain("the path of a header of ours starts with its folder")
  } else {
    library = target; sub(/\/.*/, "", library)
    if (library in guarded && !index(allowed[from], " <" library "> "))
      complain(from "/ may not know that library")
  }
}

END {
  if (includes == 0) { print "no include found" > "/dev/stderr"; ++faults }
  exit (faults > 0)
}
