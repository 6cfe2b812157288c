// key_source.cpp -- the one counter behind take_a_key().
// It is never reset: a key, once handed out, is never handed out again.
#include "network/key_source.h"

unsigned current_key = 0;

unsigned take_a_key() { return ++current_key; }
