#pragma once
#include "platform/error.h"

// The error that the work raises; its number is 0 if it raises none.
template <class Work>
Error Raised(Work&& work) {
  try {
    work();
  } catch (const Error& error) {
    return error;
  }
  return {};
}

template <class Work>
int Error_Of(Work&& work) {
  return Raised(work).number;
}
