# What differs between one deployment of the service and another. The sources see these through Deployment.h alone.
set(ORVANE_SERVICE_DOMAIN "orvane.localhost:48443" CACHE STRING
    "Domain of the review service; a customer's API host is <subdomain>.<this>")
set(ORVANE_WEB_HOST "www.orvane.localhost:48443" CACHE STRING
    "Host of the service's public web site (version file, installer)")
set(ORVANE_BUNDLE_IDENTIFIER "com.orvane.vorrel" CACHE STRING
    "Identifier of the plug-in's bundle, by which it finds its own resources")
set(ORVANE_KEYCHAIN_ERROR_DOMAIN "com.orvane.vorrel.keychain" CACHE STRING
    "Error domain of the credential store")

# Fixed: the host looks for plug-ins in this folder. Sources, presets, scripts and stand-in host take it from here.
set(ORVANE_MEDIACORE_FOLDER "/Library/Application Support/Adobe/Common/Plug-ins/7.0/MediaCore")
set(ORVANE_PLUGIN_FOLDER "${ORVANE_MEDIACORE_FOLDER}/OrvaneVorrel" CACHE INTERNAL "Where bundle and presets go")

# The encoding presets, for large frames first: what the sources call each, and its file.
set(presets HIGH:Orvane.epr MEDIUM:Orvane_medium.epr LOW:Orvane_low.epr)
list(TRANSFORM presets REPLACE ".*:" "" OUTPUT_VARIABLE files)
set(ORVANE_PRESET_FILES "${files}" CACHE INTERNAL "File names of the encoding presets")
list(TRANSFORM presets REPLACE "(.*):(.*)" "#define ORVANE_\\1_PRESET \"\\2\"")
list(JOIN presets "\n" ORVANE_PRESET_DEFINITIONS)

configure_file("${PROJECT_SOURCE_DIR}/Mac/Deployment.h.in"
               "${CMAKE_BINARY_DIR}/generated/Deployment.h" @ONLY)
add_library(orvane_deployment INTERFACE)
target_include_directories(orvane_deployment INTERFACE "${CMAKE_BINARY_DIR}/generated")
