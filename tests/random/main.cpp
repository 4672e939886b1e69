// Writes a random script and what it has to print: random_script TABLES SEED COMMANDS SCRIPT
// OUTPUT PLACES. PLACES is `any`, or `as_made` for handles that strict memory lets pass. Prints how
// many commands were called, and how many calls were refused for their words.
#include "script.h"

#include <exception>
#include <fstream>
#include <iostream>
#include <string>

int main(int count, char **words)
{
    if (count != 7) {
        std::cerr << "usage: random_script TABLES SEED COMMANDS SCRIPT OUTPUT PLACES\n";
        return 2;
    }
    try {
        const random_test::tables all = random_test::read_tables(words[1]);
        std::ofstream commands{words[4], std::ios::binary};
        std::ofstream output{words[5], std::ios::binary};
        const bool as_made = words[6] == std::string{"as_made"};
        random_test::script made{all, std::stoull(words[2]), as_made, commands, output};
        made.write(static_cast<unsigned>(std::stoul(words[3])));
        if (!commands.flush() || !output.flush()) {
            std::cerr << "random_script: the files cannot be written\n";
            return 1;
        }
        std::cout << made.called().size() << " " << made.refused() << "\n";
    } catch (const std::exception &problem) {
        std::cerr << "random_script: " << problem.what() << "\n";
        return 1;
    }
}
