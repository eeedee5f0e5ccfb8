# Found in place of the installed package file: stand-ins.cmake has made the target already.
set(nlohmann_json_FOUND TRUE)
