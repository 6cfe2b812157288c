// panel_fixture.h -- a fresh IOPanel per test, with helpers to read a
// description from a text and to compare panels as canonical texts.
// Panels live to the end of the process, as in the session.
#ifndef TESTS_UNIT_PANEL_PANEL_FIXTURE_H
#define TESTS_UNIT_PANEL_PANEL_FIXTURE_H

#include <gtest/gtest.h>

#include <string>

#include "panel/io_panel.h"
#include "test_support.h"

class PanelFixture : public ::testing::Test {
 protected:
  void SetUp() override;

  // A new panel sharing this test's symbol table.
  IOPanel* new_panel();
  int key(const char* text) { return symbols->add("%s", text); }
  const char* text(int k) { return symbols->text(k); }

  // Reads `description` into `p` (the test's panel by default) through a
  // temporary file; read_iop's result.
  int read_text(const std::string& description, IOPanel* p = nullptr);
  // What write_iop writes for `p`.
  std::string written(IOPanel* p = nullptr);

  SymbolTable* symbols = nullptr;
  IOPanel* panel = nullptr;
};

// The panel as one canonical line: module, declarations with modifiers, then
// every named layout panel with the full tree below it. Two panels print
// alike exactly when they hold the same tree.
std::string dump(IOPanel* p);

using testsupport::literal;

#endif
