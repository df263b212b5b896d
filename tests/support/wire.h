#pragma once

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

/// The bytes that a row of hexadecimal pairs stands for ("02 31 1C"), read without the code under test.
inline std::vector<std::uint8_t> hexBytes(const std::string &pairs)
{
    std::istringstream input(pairs);
    std::vector<std::uint8_t> bytes;
    for (std::string pair; input >> pair;)
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(pair, nullptr, 16)));
    return bytes;
}

/// Protocol text from text with visible separators: '^' stands for FS, '|' for GS, ';' for RS and ',' for US.
inline std::string wire(std::string text)
{
    static const std::string separators = "^|;,";
    for (char &character : text)
        if (const auto found = separators.find(character); found != std::string::npos)
            character = static_cast<char>(0x1C + found);
    return text;
}

/// The same the other way round, so that a failing comparison can be read.
inline std::string visible(std::string text)
{
    for (char &character : text)
        if (character >= 0x1C && character <= 0x1F) character = "^|;,"[character - 0x1C];
    return text;
}
