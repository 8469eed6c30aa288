// Pictures and videos in files and streams: PNG and OpenEXR by libraries, all else through the program
// ffmpeg. The main header of this library.
//
//   const media::Picture paper = media::read_picture("paper.jpg");        // straight alpha, any format
//   const host::World layer = media::world_of(paper, host::Depth::k16);   // for the host
//   media::write_picture("frame.png", media::PictureFormat::kPng, media::picture_of(world));
//
//   media::VideoSink video("loop.mov", media::VideoFormat::kMov,
//                          {.size = {1920, 1080}, .depth = world.depth()});
//   video.write(0, world);                                                // each frame in its order
//   video.finish();                                                       // the file appears, whole
//
// Files appear whole or not at all. Every function throws flumo::Failure with one line for the user.
#pragma once

#include "media/moving_picture.h"
#include "media/output_pattern.h"
#include "media/picture/picture.h"
#include "media/picture/picture_format.h"
#include "media/picture_file.h"
#include "media/stream_sink.h"
#include "media/video_sink.h"
#include "media/world_picture.h"
