! Writes output.txt: the files of peaks and background points of the cases in cases.txt, line by line as the programs that read them
! expect.
!
!   gfortran -std=f2018 peak_files.f90 && ./a.out < cases.txt > output.txt
!
! A case is a record with kind, peaks, scale of their positions, radiation, lambda 1, lambda 2, ratio, scattering variable, x space, and,
! but for "free" and "background", a second one with what the dialog asks, see the reads below; "-" is the text that stands there first.
! Each file stands behind a line with its kind, peaks, bytes, and the two sums of Adler-32 of its bytes; one of 400 peaks is left out.
program peak_files
    implicit none
    integer, parameter :: u = 20, most = 400, shown_peaks = 30
    character(*), parameter :: date_form = '(i2,a,i2,a,i4,a,3(i2,a))', wave_form = '(a,3(1x,f8.5))'
    character(*), parameter :: name = 'lab6 run 7.xye', path = '/data/november/'//name, instr = 'XYSIGMA'
    character(20) :: kind, scat_var, xspace
    character(40) :: date
    integer :: n, radiation, i, stat
    real :: scale, conv(3), wave(3), x(most), y(most), bgr(most)

    write (date, date_form) 5, '/', 11, '/', 2026, ' at ', 9, ':', 7, ':', 30, ' '
    do
        read (*, *, iostat=stat) kind, n, scale, radiation, conv, scat_var, xspace
        if (stat /= 0) exit
        do i = 1, most
            x(i) = scale*(5 + i*0.3125 + mod(i*37, 64)/4096.0)
            y(i) = real(i*i)*1.04
            bgr(i) = real(i - 3)/3.0
        end do
        select case (radiation)
        case (1)
            wave = conv
        case (2)
            wave = [1.540599, 1.54439, 0.5]
        case (3)
            wave = [0.70926, 0.71354, 0.5]
        case (4)
            wave = [1.78892, 1.79285, 0.5]
        case default
            wave = [1.540599, 0.0, 0.0]
        end select
        open (u, file='made.txt', status='replace')
        select case (kind)
        case ('free')
            call free
        case ('background')
            call background
        case ('dicvol')
            call dicvol
        case ('ito')
            call ito
        case ('treor')
            call treor
        case ('vecfind')
            call vecfind
        end select
        close (u)
        call tell
    end do

contains

    subroutine free
        write (u, '(a)') '! Data file : '//path
        write (u, '(a)') '! Format    : '//instr
        write (u, '(a)') '! peak_position   peak_intensity    peak_background'
        do i = 1, n
            write (u, '(3f15.5)') x(i), y(i), bgr(i)
        end do
    end subroutine

    subroutine background
        write (u, '(a)') '! Data file : '//path
        write (u, '(a)') '! Format    : '//instr
        write (u, '(a)') '! Position      Background_value'
        do i = 1, n
            write (u, '(2f15.5)') x(i), y(i)
        end do
    end subroutine

    subroutine dicvol
        character(180) :: title
        integer :: lines, itype, systems(6), impurities, zero(2), option
        real :: edges(3), angles(2), volumes(2), lambda, material(3), eps, fom
        read (*, *) title, lines, itype, systems, edges, angles, volumes, lambda, material, eps, fom, impurities, zero, option
        write (u, '(a)') '# Input file for WDICVOL06'
        write (u, '(a)') '# created by Vantrelo-2006: '//date(1:len_trim(date) + 1)
        write (u, '(a)') '! DATA FILE: '//name
        write (u, '(a)') '! INSTRM: '//instr
        write (u, wave_form) '! WAVE: ', wave
        write (u, '(a,a)') ' ', trim(title)
        write (u, '(8(1x,i3),22x,a)') min(lines, n), itype, systems, '! N,ITYPE,JC,JT,JH,JO,JM,JTR'
        write (u, '(3f6.1,2f9.1,2f6.1,6x,a)') edges, volumes, angles, '! AMAX,BMAX,CMAX,VOLMIN,VOLMAX,BEMIN,BEMAX'
        write (u, '(t1,f8.5,3(1x,f8.3),18x,a)') lambda, material, '! WAVE,POIMOL,DENS,DELDEN'
        write (u, '(2(1x,f8.3),5i4,16x,a)') eps, fom, impurities, zero, option, 2, &
            '! EPS,FOM, N_IMP, ZERO_search, ZERO_refinement, DICVOL06_OPTION, ISUP'
        do i = 1, min(lines, n)
            write (u, '(f14.5,2f16.3)') x(i), y(i), bgr(i)
        end do
    end subroutine

    subroutine ito
        character(180) :: title
        real :: lambda, shift
        read (*, *) title, lambda, shift
        if (title == '') title = 'ITO input parameters'
        write (u, '(a)') trim(title)
        if (lambda >= 0.001) then
            write (u, '(i1,2a1,i1,3i2,2f5.2,f10.5,i2,2i1,8i2)') 0, '0', ' ', 4, 0, 0, 0, 3.0, 4.5, lambda, 0, 0, 0, 3, 6, 6, 6, 0
        else
            write (u, '(a)') '9'
        end if
        write (u, '(4f10.5)') shift, 4.0, 14.0, 0.0
        do i = 1, n
            write (u, '(f10.5)') x(i)
        end do
        write (u, '(a)') '0.0 '
        write (u, '(a)') 'END'
    end subroutine

    subroutine treor
        character(180) :: title
        integer :: spacing
        real :: edge, volume, beta, lambda, merit
        read (*, *) title, spacing, edge, volume, beta, lambda, merit
        if (title == '') title = 'Treor input parameters'
        write (u, '(a)') '! DATA FILE: '//name
        write (u, '(a)') '! INSTRM: '//instr
        write (u, wave_form) '! WAVE: ', wave
        write (u, '(a)') trim(title)
        do i = 1, n
            write (u, '(3(2x,f12.5))') x(i), y(i), bgr(i)
        end do
        write (u, '(a)') ' '
        write (u, '(2x,a,i1,a)') 'CHOICE=', spacing, ','
        write (u, '(2x,a,f8.5,a)') 'WAVE=', lambda, ','
        if (beta > 0) write (u, '(2x,a,f6.2,a)') 'MONO=', beta, ','
        write (u, '(2x,a,f7.0,a)') 'VOL=', volume, ','
        if (edge <= 0.001) edge = 20.0
        write (u, '(2x,a,f5.0,a)') 'CEM=', edge, ','
        if (merit > 0.001) write (u, '(2x,a,f5.0,a)') 'MERIT=', merit, ','
        write (u, '(2x,a)') 'END*'
    end subroutine

    subroutine vecfind
        character(180) :: title, lattice, cell, tolerance, range, points, lambda
        integer :: output, special
        character(*), parameter :: outputs(3) = [character(12) :: 'SHORT-OUTPUT', 'LONG-OUTPUT', 'NO-OUTPUT']
        read (*, *) title, lattice, cell, tolerance, range, points, lambda, output, special
        write (u, '(a)') '! Input file for Vecfind'
        write (u, '(a)') '! created by Vantrelo-2006:'//date(1:len_trim(date) + 1)
        write (u, '(a)') '! Data file : '//path
        write (u, '(a)') 'TITLE '//trim(title)
        write (u, '(a)') 'SPGR    '//or(lattice, 'P')
        write (u, '(a)') 'CELL    '//or(cell, '   5.5000  5.5000  6.0000   90.0   90.0   90.0')
        write (u, '(a)') trim(outputs(output))
        if (special == 1) write (u, '(a)') 'K_COMMENSURATE'
        if (lambda == '-') write (lambda, '(f14.5)') conv(1)
        select case (scat_var)
        case ('2theta')
            write (u, '(a)') 'CWTOL '//trim(lambda)//'  '//or(tolerance, '  0.300 ')
        case ('TOF')
            write (u, '(a)') 'TOFTOL '//trim(lambda)//'  '//or(tolerance, ' 2000.00 ')
        end select
        write (u, '(a)') 'K_RANGE '//or(range, '   0.0  0.5    0.0  0.5    0.0  0.5 ')
        write (u, '(a)') 'K_DIV   '//or(points, '      100         100         100 ')
        write (u, '(a)') '! peak_position  peak_intensity  peak_background'
        select case (xspace)
        case ('2theta', '----')
            write (u, '(a,i5)') '2THETA_LIST  ', n
        case ('TOF')
            write (u, '(a,i5)') 'TOF_LIST  ', n
        case ('d-space', 'd-spacing')
            write (u, '(a,i5)') 'D_LIST  ', n
        case ('q-space')
            write (u, '(a,i5)') 'Q_LIST  ', n
        case ('s-space')
            write (u, '(a,i5)') 'D*_LIST  ', n
        end select
        do i = 1, n
            write (u, '(3f15.5)') x(i), y(i), bgr(i)
        end do
    end subroutine

    function or(text, usual) result(line)
        character(*), intent(in) :: text, usual
        character(:), allocatable :: line
        line = trim(text)
        if (text == '-') line = usual
    end function

    subroutine tell
        character(1) :: byte
        character(:), allocatable :: bytes
        integer :: size, a, b
        open (u, file='made.txt', access='stream', form='unformatted', status='old')
        inquire (u, size=size)
        allocate (character(size) :: bytes)
        a = 1
        b = 0
        do i = 1, size
            read (u) byte
            bytes(i:i) = byte
            a = mod(a + ichar(byte), 65521)
            b = mod(b + a, 65521)
        end do
        close (u, status='delete')
        write (*, '(a,5(1x,i0))') trim(kind), n, size, a, b
        if (n <= shown_peaks) write (*, '(a)', advance='no') bytes
    end subroutine
end program
