// How the program ends, as scripts see it.
#pragma once

namespace flumo::cli {

/// Exit status of the process. Documented in `flumo --help`; scripts rely on the numbers.
enum class ExitStatus : int {
    kDone = 0,              ///< everything asked for was done
    kFrameFailed = 1,       ///< the effect failed on at least one frame or event, or a check found something
    kUsage = 2,             ///< options, values or a scene's contents are not acceptable
    kUnreadableInput = 3,   ///< a module, scene, gradient or layer file cannot be read
    kNoOpenGl = 4,          ///< the effect found no usable OpenGL
    kUnwritableOutput = 5,  ///< a file, its folder or standard output cannot be written
    kInterrupted = 130,     ///< stopped by SIGINT
    kTerminated = 143,      ///< stopped by SIGTERM or SIGHUP
};

}  // namespace flumo::cli
