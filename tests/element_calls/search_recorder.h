// search_recorder.h: a QFIND_SORT_INTEGER that records what it is asked, in the place of Tarnix's.
#ifndef FINITES_TESTS_SEARCH_RECORDER_H
#define FINITES_TESTS_SEARCH_RECORDER_H

#include <cstdint>
#include <vector>

struct recorded_search {
  std::int32_t key;
  const std::int32_t* list;           // where it lay
  std::vector<std::int32_t> entries;  // what it held
};

const std::vector<recorded_search>& recorded_searches();
void forget_searches();

// Recording allocates; a test that counts allocations switches it off. Searches are answered all the same.
void record_searches(bool on);

#endif
