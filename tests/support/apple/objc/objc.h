// What the Objective-C runtime's header declares, as far as it is used here.
#pragma once

#ifdef STAND_IN_X86_64
typedef signed char BOOL;
#else
typedef bool BOOL;
#endif

#define YES __objc_yes
#define NO __objc_no
#define nil nullptr
#define Nil nullptr
