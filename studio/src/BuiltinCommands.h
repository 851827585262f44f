#pragma once
// Commands the studio itself offers: about, open, close, etransmit, commands.
class MainFrame;
class DrawingSession;

namespace oa { class OaApp; }

void registerBuiltinCommands(oa::OaApp& app, DrawingSession& session, MainFrame*& frame);
