// twin_test.cpp -- generated ec programs against their compiled twins: the
// evaluator and the .dro are given the same random inputs, instant after
// instant, and must produce bitwise-equal outputs, with no assertion failing
// and no output nil. A history reset half-way checks that both forms go
// back to the same first instant.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "ecexe/dro_load.h"
#include "ecexe/rp_ec_exe.h"
#include "foundations/symbol_table.h"

namespace {

// One generated pair: the path without extension, and the counts of inputs
// and outputs it was generated with.
struct Twin { std::string stem; int inputs; int outputs; };

void PrintTo(const Twin& twin, std::ostream* out) { *out << twin.stem; }

std::vector<Twin> twin_programs() {
  std::vector<Twin> twins;
  std::stringstream list(TWIN_PROGRAMS);
  for (std::string stem, ins, outs; std::getline(list, stem, ':') && std::getline(list, ins, ':') &&
                                    std::getline(list, outs, ',');)
    twins.push_back({stem, std::stoi(ins), std::stoi(outs)});
  return twins;
}

// Random inputs that reach the corners of the arithmetic: small ints most of
// the time (so comparisons go both ways), the whole 32-bit range sometimes,
// and reals of either sign.
class InputSource {
 public:
  explicit InputSource(unsigned seed) : rng_(seed) {}

  void write(const char* type, void* loc) {
    if (strcmp(type, "bool") == 0) {
      *static_cast<int32_t*>(loc) = static_cast<int32_t>(rng_() % 3 != 0);
    } else if (strcmp(type, "int") == 0) {
      uint32_t r = static_cast<uint32_t>(rng_());
      *static_cast<int32_t*>(loc) = rng_() % 4 == 0 ? static_cast<int32_t>(r)
                                                    : static_cast<int32_t>(r % 2001) - 1000;
    } else {
      *static_cast<double*>(loc) = std::uniform_real_distribution<double>(-100.0, 100.0)(rng_);
    }
  }

 private:
  std::mt19937 rng_;
};

size_t value_size(const char* type) { return strcmp(type, "real") == 0 ? sizeof(double) : sizeof(int32_t); }

class TwinTest : public ::testing::TestWithParam<Twin> {};

TEST_P(TwinTest, EvaluatorAndCompiledTwinAgreeOnEveryInstant) {
  const std::string stem = GetParam().stem;
  RPEcExe* ec = new RPEcExe();  // never freed, as in the tool
  ASSERT_EQ(ec->init((stem + ".ec").c_str(), new SymbolTable(1000, 5041)), 0);
  DROLoad* dro = new DROLoad();
  const char* error = dro->load((stem + ".dro").c_str());
  ASSERT_EQ(error, nullptr) << error;

  ASSERT_EQ(ec->nb_inputs(), dro->nb_inputs());
  ASSERT_EQ(ec->nb_outputs(), dro->nb_outputs());
  EXPECT_EQ(ec->nb_inputs(), GetParam().inputs);
  EXPECT_EQ(ec->nb_outputs(), GetParam().outputs);
  EXPECT_GT(ec->nb_assertions(), 0);
  for (int i = 0; i < ec->nb_inputs(); i++)
    ASSERT_EQ(std::string(ec->input_ident(i)) + ec->input_type(i),
              std::string(dro->input_ident(i)) + dro->input_type(i));
  for (int i = 0; i < ec->nb_outputs(); i++)
    ASSERT_EQ(std::string(ec->output_ident(i)) + ec->output_type(i),
              std::string(dro->output_ident(i)) + dro->output_type(i));

  InputSource inputs(12345);
  const int steps = 400;
  int changed = 0;  // instants where some output moved: the test sees values, not constants
  std::vector<char> previous;
  for (int step = 0; step < steps; step++) {
    if (step == steps / 2) {
      ec->reset_history();
      dro->reset_history();
    }
    for (int i = 0; i < ec->nb_inputs(); i++) {
      inputs.write(ec->input_type(i), ec->input_loc(i));
      memcpy(dro->input_loc(i), ec->input_loc(i), value_size(ec->input_type(i)));
    }
    ASSERT_EQ(ec->step(), 0) << stem << ": problems at instant " << step;
    ASSERT_EQ(dro->step(), 0);
    std::vector<char> now;
    for (int i = 0; i < ec->nb_outputs(); i++) {
      ASSERT_EQ(ec->output_status(i), RP_DEFINED) << ec->output_ident(i) << " at instant " << step;
      size_t size = value_size(ec->output_type(i));
      const char* mine = static_cast<const char*>(ec->output_loc(i));
      ASSERT_EQ(memcmp(mine, dro->output_loc(i), size), 0)
          << stem << ": output " << ec->output_ident(i) << " differs at instant " << step;
      now.insert(now.end(), mine, mine + size);
    }
    if (!previous.empty() && now != previous) changed++;
    previous = now;
  }
  EXPECT_GT(changed, steps / 2);
}

INSTANTIATE_TEST_SUITE_P(Generated, TwinTest, ::testing::ValuesIn(twin_programs()),
                         [](const ::testing::TestParamInfo<Twin>& info) {
                           return info.param.stem.substr(info.param.stem.rfind('/') + 1);
                         });

}  // namespace
