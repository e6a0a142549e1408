# Sourced by test: what takes longer than everybody's run.

# fuzz SECONDS: every target for so long, from its kept corpus; what it finds is left in build/fuzz/found.
fuzz() {
  local seconds=$1 target name found=build/fuzz/found
  need_packages libclang-rt-14-dev
  build fuzz
  mkdir -p "$found"
  for target in fuzz/*_fuzz.cpp; do
    name=$(basename "$target" _fuzz.cpp)
    mkdir -p "build/fuzz/corpus/$name"
    echo "Fuzzing $name for $seconds s ..."
    check "fuzz $name (see build/fuzz/$name.log and $found)" fuzz_one "$name" "$seconds" "$found"
    grep -E '^(stat::number_of_executed_units|Done)' "build/fuzz/$name.log" | sed 's/^/  /'
  done
}

fuzz_one() {
  "build/fuzz/bin/$1_fuzz" -max_total_time="$2" -print_final_stats=1 -artifact_prefix="$3/$1-" \
    "build/fuzz/corpus/$1" "fuzz/corpus/$1" >"build/fuzz/$1.log" 2>&1
}

# Which lines and branches of the core (util to config) its tests run. Exception branches are the compiler's own.
coverage() {
  need_packages gcovr
  build coverage
  find build/coverage -name '*.gcda' -delete
  run_tests coverage
  local room rooms=()
  for room in util pdu link data services config; do rooms+=(-f "src/$room/"); done
  gcovr -r . build/coverage "${rooms[@]}" --exclude-throw-branches --exclude-unreachable-branches -j "$jobs" \
    --txt build/coverage/lines.txt >/dev/null 2>build/coverage/gcovr.log
  gcovr -r . build/coverage "${rooms[@]}" --exclude-throw-branches --exclude-unreachable-branches -j "$jobs" --branches \
    --txt build/coverage/branches.txt --print-summary 2>>build/coverage/gcovr.log
  echo "What is not covered: build/coverage/lines.txt, build/coverage/branches.txt"
}

# soak MINUTES: the window on a simulated phone with random faults, over and over. CELLDESK_SOAK_SEED chooses them.
soak() {
  build asan soak_test
  export CELLDESK_SOAK_MINUTES=$1 CELLDESK_SOAK_SEED=${CELLDESK_SOAK_SEED:-$RANDOM}
  # What the sanitizer keeps of freed memory would grow for a long time.
  export ASAN_OPTIONS=$ASAN_OPTIONS:quarantine_size_mb=1:malloc_context_size=3
  echo "Soaking for $1 min, seed $CELLDESK_SOAK_SEED (see build/asan/soak.log) ..."
  check "soak, seed $CELLDESK_SOAK_SEED" build/asan/tests/soak_test >build/asan/soak.log 2>&1
  grep -E '^seed|Failure|FAILED|PASSED' build/asan/soak.log
}

# The whole program through the tour, every byte and every leak watched. What the toolkit's libraries keep or read
# is listed in tools/lib/valgrind.supp.
valgrind_tour() {
  need_packages valgrind
  build release
  echo "The tour under valgrind (see build/valgrind.log) ..."
  check "the tour under valgrind" valgrind --quiet --leak-check=full --errors-for-leak-kinds=definite \
    --show-leak-kinds=definite --error-exitcode=9 --suppressions=tools/lib/valgrind.supp --log-file=build/valgrind.log \
    build/release/bin/celldesk-tour build/release/bin/celldesk-phone build/tour-valgrind
  grep -E '== (Invalid|Conditional|Use of|[0-9,]+ bytes)' build/valgrind.log
}
