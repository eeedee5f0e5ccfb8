#pragma once

char*** _NSGetEnviron();
