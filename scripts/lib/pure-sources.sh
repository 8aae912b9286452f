# shellcheck shell=sh
# What of velmoctl needs no scheduler: all of that library but what writes to standard output.

# pure_sources: the files of admin/, one on each line.
pure_sources() {
  sed -n '/^add_library(velmo-admin-text/,/)/s/^  \([a-z_]*[.]cpp\))*$/admin\/\1/p' \
    admin/CMakeLists.txt | grep -vx admin/output.cpp
}
