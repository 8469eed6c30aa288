// A render job, from what a user asks to the last file. The main header of this library.
//
//   job::Session session("Flumo.so");                              // loads the effect, sets it up
//   job::RenderRequest request;
//   request.scene = "look.json";
//   request.output = media::OutputPattern("frame.####.png");
//   const job::RenderJob shot = job::make_render_job(request, session.catalog());
//   job::RunSettings settings;
//   settings.stop = [&] { return cancelled.load(); };
//   const job::RunResult result = job::run_job(session, shot, settings, observer);
//
// `observer` is a job::Observer of the program's own, which receives an event for every frame. Nothing here
// writes to standard output or error, handles signals or ends the process (the effect itself prints its
// driver's version on standard output); failures are thrown as flumo::Failure with one line for the user. A
// program that draws frames itself takes a session's host and job::apply_tracks().
#pragma once

#include "job/look.h"
#include "job/progress.h"
#include "job/render_job.h"
#include "job/render_request.h"
#include "job/run.h"
#include "job/session.h"
