#!/bin/bash
# A scheduler that cannot store a new PPD file: a full disk, and one that takes no writing. The
# queue keeps its old file, and its pause, which the scheduler forgets even then.
set -eu
# shellcheck source=tests/admin/ring.sh
. "$(dirname "$0")/ring.sh"

if [[ $EUID -ne 0 ]]; then
  echo 'not run: only root can give the scheduler a small disk'
  exit 77
fi

make_queue photo "$RASTER"
scheduler_client cupsdisable -r 'for a test' photo

# with_disk FOLDER: puts a small disk with the same files there, until without_disk.
with_disk() {
  disk=$1
  cp -a "$disk" "$work/files"
  mount -t tmpfs -o size=16k,mode=0755 none "$disk"
  on_exit "umount '$disk'; scheduler_stop; printer_stop; rm -rf '$work'"
  cp -a "$work/files/." "$disk"
  chmod --reference "$work/files" "$disk"
  chown --reference "$work/files" "$disk"
}
without_disk() {
  umount "$disk"
  on_exit "scheduler_stop; printer_stop; rm -rf '$work'"
  rm -rf "$work/files"
}
fill() { ! cat /dev/zero >"$disk/filler" 2>/dev/null; }

# expect_kept RULE: attaching was refused, and the queue is as it was.
expect_kept() {
  expect_refused "$1" 'error_log says why'
  expect_part "$1: what is left is said" "$errors" '; the PPD file is as it was'
  expect "$1: one line" "$(wc -l <<<"$errors")" 1
  expect_unchanged "$1" photo
  expect_no_part "$1: the scheduler reads the old file" "$(queue_attribute photo printer-commands)" ReportLevels
  expect "$1: it is paused" "$(queue_attribute photo printer-state-reasons)" paused
  expect "$1: its message" "$(queue_attribute photo printer-state-message)" 'for a test'
}

for folder in spool etc/ppd; do
  with_disk "$scheduler_dir/$folder"
  expect_that "$folder: the disk is full" fill
  ctl attach --no-ask photo
  expect_kept "$folder: full"
  rm "$disk/filler"
  mount -o remount,ro "$disk"
  ctl attach --no-ask photo
  expect_kept "$folder: read-only"
  mount -o remount,rw "$disk"
  ctl attach --no-ask photo
  expect_done "$folder: with room again"
  ctl detach photo
  expect_unchanged "$folder: detached" photo
  without_disk
done
expect_end
