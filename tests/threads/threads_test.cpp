// threads_test.cpp: eight threads call every routine on the elements of one model, each element by one of them. Every
// answer has the bits of the same call by one thread.
//
// The environment variable FINITES_THREAD_CALLS sets the number of calls; without it there are 200,000.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "finites/fields.h"
#include "scene.h"
#include "tarnix.h"

namespace {

using every_call::analysis;
using every_call::family;
using every_call::listener;
using every_call::observed;
using every_call::scene;

constexpr int THREADS = 8;
constexpr int CALLS_AN_ELEMENT = 70;  // about
constexpr int REPETITIONS = 6;        // beside them, so that threads are in the library most of the time

int call_count() {
  const char* text = std::getenv("FINITES_THREAD_CALLS");
  const long count = text != nullptr ? std::strtol(text, nullptr, 10) : 200000;
  return count < 1 ? 1 : count > 100000000 ? 100000000 : static_cast<int>(count);
}

// So many elements in each analysis that all calls are made in two orders, and enough for each thread.
int elements_of_an_analysis() {
  const int calls = 2 * CALLS_AN_ELEMENT * static_cast<int>(every_call::analyses().size());
  return std::max(2 * THREADS, call_count() / calls + 1);
}

struct answer {
  std::string name;
  std::uint64_t hash;
};

// The answers of one element, in the order of its calls.
class answers : public listener {
 public:
  void called(const char* routine, const std::string& what, const observed& written) override {
    all_.push_back({std::string(routine) + " " + what, written.hash()});
  }
  int repetitions() const override { return REPETITIONS; }
  const std::vector<answer>& all() const { return all_; }

 private:
  std::vector<answer> all_;
};

// The answers of all elements and the number of assertions that failed, which are part of some answers.
struct record {
  explicit record(int elements) : of_element(static_cast<std::size_t>(elements)) {}
  answers& at(int elem) { return of_element[static_cast<std::size_t>(elem - 1)]; }

  std::vector<answers> of_element;
  std::int32_t assertions = 0;
};

// Runs a routine in all threads at once, each with an exchange area of its own.
void in_threads(const std::function<void(double* exchange)>& work) {
  std::atomic<int> waiting{THREADS};
  std::vector<std::thread> threads;
  for (int i = 0; i < THREADS; ++i) {
    threads.emplace_back([&] {
      std::vector<double> exchange(EXCHANGE_LENGTH, 0.0);
      TARNIX_SET_EXCHANGE_AREA(exchange.data());
      --waiting;
      while (waiting > 0) std::this_thread::yield();  // until all are there
      work(exchange.data());
      TARNIX_SET_EXCHANGE_AREA(nullptr);
    });
  }
  for (std::thread& t : threads) t.join();
}

// Deals elements out one by one, each to one of the threads. The counter is relaxed, so that it orders nothing else:
// the sanitizer would take calls that follow each other for safe.
void deal(const std::vector<int>& elements, const std::function<void(int elem, double* exchange)>& work) {
  std::atomic<std::size_t> next{0};
  const auto place = [&next] { return next.fetch_add(1, std::memory_order_relaxed); };
  in_threads([&](double* exchange) {
    for (std::size_t i = place(); i < elements.size(); i = place()) work(elements[i], exchange);
  });
}

// The elements whose kinds repeat after `period` numbers, those of one kind together.
std::vector<int> ordered(int elements, int period) {
  std::vector<int> all;
  for (int first = 1; first <= period; ++first) {
    for (int elem = first; elem <= elements; elem += period) all.push_back(elem);
  }
  return all;
}

// Neighbours, whose kinds differ, at the same time, with all that is called of an element.
void call_mixed(scene& model, int stage, record& to) {
  deal(ordered(model.elements(), 1),
       [&](int elem, double* exchange) { model.call(stage, elem, exchange, to.at(elem)); });
}

// Elements of one kind at the same time: the same code in all threads.
void call_by_kind(scene& model, int stage, record& to) {
  for (const family f : every_call::FAMILIES) {
    deal(ordered(model.elements(), model.period(f)),
         [&](int elem, double* exchange) { model.call(f, stage, elem, exchange, to.at(elem)); });
  }
}

void call_in_one_thread(scene& model, int stage, record& to) {
  for (int elem = 1; elem <= model.elements(); ++elem) model.call(stage, elem, model.exchange(), to.at(elem));
}

template <class CALLS>
record run(const analysis& a, int elements, const CALLS& calls) {
  record all(elements);
  scene model(a, elements);
  for (int stage = model.first_stage(); stage <= scene::LAST_STAGE; ++stage) {
    model.enter(stage);
    calls(model, stage, all);
  }
  TARNIX_GET_ASSERT_COUNT(&all.assertions);
  return all;
}

// The number of calls; differences by what was called.
int compare(record& expected, record& found, std::map<std::string, int>& differences) {
  int calls = 0;
  for (std::size_t e = 0; e < expected.of_element.size(); ++e) {
    const std::vector<answer>&one = expected.of_element[e].all(), &many = found.of_element[e].all();
    EXPECT_EQ(one.size(), many.size());
    for (std::size_t i = 0; i < std::min(one.size(), many.size()); ++i, ++calls) {
      EXPECT_EQ(one[i].name, many[i].name);
      if (one[i].hash != many[i].hash) ++differences[one[i].name];
    }
  }
  return calls;
}

}  // namespace

// The library of the rotation of members is loaded by the first call that wants it, whichever thread that is.
TEST(Threads, MayAllBeTheFirstToWantALibrary) {
  const analysis& a = every_call::analyses().front();
  record many = run(a, 4 * THREADS, call_mixed);
  record one = run(a, 4 * THREADS, call_in_one_thread);
  std::map<std::string, int> differences;
  compare(one, many, differences);
  for (const auto& [name, count] : differences) ADD_FAILURE() << name << ": " << count << " answers differ";
}

TEST(Threads, GiveTheBitsOfOneThread) {
  const int elements = elements_of_an_analysis();
  int calls = 0;
  std::map<std::string, int> differences;
  for (const analysis& a : every_call::analyses()) {
    record one = run(a, elements, call_in_one_thread);
    for (const auto call : {call_mixed, call_by_kind}) {
      record many = run(a, elements, call);
      calls += compare(one, many, differences);
      EXPECT_EQ(one.assertions, many.assertions) << a.name;
    }
  }
  EXPECT_GE(calls, call_count());
  for (const auto& [name, count] : differences) ADD_FAILURE() << name << ": " << count << " answers differ";
}

// A thread with an area of its own leaves that of MODEL_DATA alone; without one it uses it as ever.
TEST(Threads, LeaveTheExchangeAreaOfTheModelAlone) {
  const int elements = 2 * THREADS;
  record unused(elements);
  scene model(every_call::analyses().front(), elements);
  std::fill_n(model.exchange(), EXCHANGE_LENGTH, 4711.0);
  model.enter(scene::LAST_STAGE);
  call_mixed(model, scene::LAST_STAGE, unused);
  for (int i = 0; i < EXCHANGE_LENGTH; ++i) ASSERT_EQ(model.exchange()[i], 4711.0) << i;
  call_in_one_thread(model, scene::LAST_STAGE, unused);
  EXPECT_NE(std::count(model.exchange(), model.exchange() + EXCHANGE_LENGTH, 4711.0), EXCHANGE_LENGTH);
}
