# What speaks to the frameworks, in Objective-C++.
tarnwik_library(tarnwik_macos_native
  SOURCES native/FoundationValues.h native/FoundationValues.mm native/Keychain.h native/Keychain.mm
          native/MainBundle.h native/MainBundle.mm native/NativeNetworkExtension.mm
          native/NativeTunnelProviderManager.h native/NativeTunnelProviderManager.mm native/NetworkExtension.h
          native/PlatformError.h native/PropertyValue.h native/StandardUserDefaults.h native/StandardUserDefaults.mm
  LINK "-framework Foundation" "-framework NetworkExtension" "-framework Security")
tarnwik_library(tarnwik_macos_native_desktop
  SOURCES native/Application.h native/Application.mm
  LINK tarnwik_macos_native "-framework AppKit")
foreach(library tarnwik_macos_native tarnwik_macos_native_desktop)
  target_compile_options(${library} PRIVATE -fobjc-arc)
  set_target_properties(${library} PROPERTIES AUTOMOC OFF)
endforeach()

target_link_libraries(tarnwik_macos_system PUBLIC tarnwik_macos_native tarnwik_storekit_bridge)
target_link_libraries(tarnwik_macos_system_desktop PUBLIC tarnwik_macos_native_desktop)
