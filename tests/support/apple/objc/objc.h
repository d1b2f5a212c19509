// What the Objective-C runtime's header declares, as far as it is used here.
#pragma once

typedef bool BOOL;

#define YES __objc_yes
#define NO __objc_no
#define nil nullptr
#define Nil nullptr
