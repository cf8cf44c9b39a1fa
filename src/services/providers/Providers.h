#pragma once

#include "services/Provider.h"

namespace tarnwick {

// The rows of the table, one a file of the same name.
Provider gitHub();
Provider linear();
Provider supabase();
Provider resend();
Provider plausible();
Provider stripe();
Provider coinGecko();
Provider polar();
Provider dodoPayments();
Provider dub();
Provider simpleAnalytics();
Provider dataFast();
Provider youTube();
Provider x();
Provider homeAssistant();
Provider stocks();
Provider gmail();
Provider dropbox();
Provider tikTok();
Provider shopify();
Provider claudePlan();
Provider openCode();
Provider glm();
Provider copilot();
Provider cursorPersonal();
Provider cursorTeam();
Provider grok();

}  // namespace tarnwick
