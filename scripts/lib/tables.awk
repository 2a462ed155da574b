# SPDX-License-Identifier: Apache-2.0
# awk -f tables.awk TABLES DOCUMENT: the document with what stands between its markers
#   <!-- table: ELEMENT -->
#   <!-- end of table -->
# replaced by the element's table in TABLES and the conditions below it; those of "values" by the
# kinds of values.
FNR == NR {
  if ($1 == "###") {
    element = substr($2, 2, length($2) - 2)
    seen = 0
  } else if (/^\|/) {
    seen = 1
  }
  if (seen && $1 != "###") tables[element] = tables[element] $0 "\n"
  next
}
/^<!-- table: / {
  print
  if (!($3 in tables)) {
    print "tables.awk: there is no table of " $3 > "/dev/stderr"
    exit 1
  }
  table = tables[$3]
  sub(/\n+$/, "\n", table)
  printf "\n%s\n", table
  skipping = 1
}
/^<!-- end of table -->/ { skipping = 0 }
!skipping
