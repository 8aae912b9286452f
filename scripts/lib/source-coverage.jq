# What Clang's counts of a run (llvm-cov export) say of $sources, files of admin/, and their headers:
# how many lines and branches were reached, and each place that was not, by file and line. The
# instances of a template are one. A line that is not reached lies in a part that is never run.

($sources / "\n") as $sources

| def name: sub("^.*/admin/"; "admin/");
def is_wanted: sub("[.]h$"; ".cpp") | IN($sources[]);
# Counts of the same place, added up.
def together:
  group_by([.file, .line, .column, .end, .what]) | map(.[0] + {count: map(.count) | add});
def shown: "(\(.covered) out of \(.count))";

.data[0] as $data
| [$data.files[] | .file = (.filename | name) | select(.file | is_wanted)] as $files
| ([$files[] | {file} + (.branches[] | {line: .[0], column: .[1], end: .[2:4]}
      + ({what: "never true", count: .[4]}, {what: "never false", count: .[5]}))]
  | together) as $branches
| ([$data.functions[] | (.filenames[0] | name) as $file | select($file | is_wanted)
      | .regions[] | select(.[7] == 0)
      | {$file, line: .[0], column: .[1], end: .[2:4], what: "never run", count: .[4]}]
  | together) as $parts
| [$files[].summary.lines] as $lines

| "lines: " + ({covered: $lines | map(.covered) | add, count: $lines | map(.count) | add} | shown),
  "branches: " + ({covered: $branches | map(select(.count > 0)) | length,
                   count: $branches | length} | shown),
  ($sources - [$files[].file] | .[] | "\(.): in no test"),
  ($branches + $parts | map(select(.count == 0)) | sort_by(.file, .line, .column)
    | .[] | "\(.file):\(.line):\(.column): \(.what)")
