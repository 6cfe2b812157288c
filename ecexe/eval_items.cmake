# The evaluation items of the ec evaluator and the key source, kept apart
# from the rest of ecexe/CMakeLists.txt so that each part can be listed on
# its own.
target_sources(tavik_core PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/eval_item.cpp
  ${CMAKE_CURRENT_LIST_DIR}/eval_arith.cpp
  ${CMAKE_CURRENT_LIST_DIR}/eval_logic.cpp
  ${CMAKE_CURRENT_LIST_DIR}/eval_terminal.cpp
  ${CMAKE_CURRENT_LIST_DIR}/eval_memory.cpp
  ${CMAKE_CURRENT_LIST_DIR}/eval_func.cpp
  ${CMAKE_CURRENT_LIST_DIR}/key_source.cpp)
