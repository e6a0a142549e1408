# Sourced by test: runs test programs and adds up what passed and failed.

passed=0
failed=0
export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1
export LSAN_OPTIONS=suppressions=$root/tools/lib/leaks.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1
export TSAN_OPTIONS=halt_on_error=1:suppressions=$root/tools/lib/tsan.supp:print_suppressions=0

# run_one PROGRAM: runs a test program with its output in a log beside it. For xargs.
run_one() {
  timeout 1500 "$1" --gtest_brief=1 >"$1.log" 2>&1
  echo "$?" >"$1.status"
}
export -f run_one

# run_tests PRESET [NAME...]: the programs of a build, two at a time, then their results in order.
run_tests() {
  local preset=$1 program name programs=()
  shift
  if [ $# -gt 0 ]; then
    for name in "$@"; do programs+=("build/$preset/tests/${name}_test"); done
  else
    programs=(build/"$preset"/tests/*_test)
  fi
  printf '%s\n' "${programs[@]}" | xargs -P "$jobs" -I{} bash -c 'run_one {}'
  for program in "${programs[@]}"; do count_program "$program"; done
}

# A program that crashed, hung or ran no test is a failure of its own.
count_program() {
  local log=$1.log status ok bad
  status=$(cat "$1.status" 2>/dev/null || echo 127)
  ok=$(sed -nE 's/^\[  PASSED  \] ([0-9]+) tests?\.$/\1/p' "$log" | tail -n 1)
  bad=$(sed -nE 's/^ ?([0-9]+) FAILED TESTS?$/\1/p' "$log" | tail -n 1)
  ok=${ok:-0}
  bad=${bad:-0}
  if [ "$status" -ne 0 ] && [ "$bad" -eq 0 ] || [ $((ok + bad)) -eq 0 ]; then bad=$((bad + 1)); fi
  passed=$((passed + ok))
  failed=$((failed + bad))
  echo "$(basename "$(dirname "$(dirname "$1")")")/$(basename "$1"): $ok passed, $bad failed"
  if [ "$bad" -gt 0 ]; then
    grep -nE 'FAILED|Failure|ERROR|runtime error|WARNING: Thread' -A 12 "$log" | head -n 80
    echo "  exit status $status; the whole log is $log"
  fi
}

# check NAME COMMAND...: a check that counts as one test.
check() {
  local name=$1
  shift
  if "$@"; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "FAILED: $name"
  fi
}

summary() {
  echo "$passed passed, $failed failed"
  [ "$failed" -eq 0 ]
  exit $?
}
