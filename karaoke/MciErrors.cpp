// SPDX-FileCopyrightText: 2026 The dj TOLVEN developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "karaoke/MciErrors.h"

#include <algorithm>
#include <array>

namespace karaoke {
namespace {

struct MciText {
  std::uint32_t number;
  std::string_view text;
};

// The misspellings, the four Portuguese texts and the missing stops are the users' own old messages.
constexpr std::array<MciText, 79> kMciTexts{{
    {290, "Bad Constant"},
    {270, "Bad Integer"},
    {293, "Bad Time Format."},
    {266, "Cannot Load Driver."},
    {279, "Cannot Use Qll."},
    {347, "Error on CreateWindow."},
    {512, "Error on Custom Driver Base."},
    {310, "Error on Device Length."},
    {288, "Device is Locked."},
    {306, "Device is Not installed."},
    {276, "Device is Not Ready."},
    {265, "Device is Qlready Open."},
    {311, "Error on Device Length."},
    {287, "Device Type Required."},
    {278, "Error on Driver."},
    {272, "Error on Internal Driver."},
    {289, "Error on Duplicate Alias."},
    {295, "Error on Duplicate Flags."},
    {281, "Extension Not Found."},
    {305, "Extra Characters."},
    {275, "File Not Found."},
    {348, "Error on File Read."},
    {286, "File Not Saved."},
    {349, "Error on File Write."},
    {304, "Filename Required."},
    {284, "Flags Not Compatible."},
    {307, "Error on Get CD."},
    {262, "Error on Hardware."},
    {303, "Illegal For Auto Open."},
    {277, "Internal Error."},
    {257, "Invalid Device ID."},
    {263, "Dispositivo de som inválido."},
    {296, "Arquivo inválido."},
    {267, "Erro de comando."},
    {292, "Missing Device Name."},
    {273, "Missing Parameter."},
    {269, "Missing String Argument."},
    {280, "Multiple Errors."},
    {291, "Must Use Shareable."},
    {299, "New Requires Alias."},
    {294, "No Closing Quote."},
    {301, "Erro ao ler o arquivo de som."},
    {312, "No Integer."},
    {346, "No Window."},
    {302, "Non Applicable Function."},
    {300, "Notify on Auto Open."},
    {297, "Null Parameter Block."},
    {264, "Out Of Memory"},
    {282, "Out Of Range."},
    {268, "Param Overflow."},
    {271, "Parser Internal."},
    {336, "Seq Div Incompatible."},
    {343, "Seq No Midi Present."},
    {337, "Seq Port In Use."},
    {339, "Seq Port Map No Device."},
    {340, "Seq Port Misc Error"},
    {338, "Seq Port Non Existent."},
    {342, "Seq Port Unspecified."},
    {341, "Seq Timer."},
    {308, "Error on Set CD."},
    {309, "Error on Set Drive."},
    {298, "Unnamed Resource."},
    {261, "Unrecognized Command."},
    {259, "Unrecognized Keyword."},
    {274, "Unsupported Function."},
    {4, "Error Allocated."},
    {2, "Bad Device ID."},
    {9, "Bad Err Number."},
    {1, "Internal Error."},
    {12, "Handle Busy."},
    {10, "Invalid Flag."},
    {5, "Invalid Handle."},
    {13, "Invalid Alias."},
    {11, "Invalid Parameter."},
    {21, "Last Error."},
    {6, "No Driver."},
    {7, "No memory."},
    {3, "Not Enabled."},
    {8, "Not Supported."},
}};

}  // namespace

std::string_view MciErrorText(std::uint32_t number) {
  const auto found = std::find_if(kMciTexts.begin(), kMciTexts.end(),
                                  [&](const MciText& entry) { return entry.number == number; });
  return found == kMciTexts.end() ? "Unknown Error." : found->text;
}

}  // namespace karaoke
